#include "platform/linux/file_descriptor.h"
#include "platform/linux/outgoing_bytes.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <numeric>
#include <vector>

namespace platform {
namespace {

using Bytes = std::vector<std::uint8_t>;

class Outgoing : public testing::Test {
protected:
    Outgoing() {
        std::array<int, 2> ends{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
        near = FileDescriptor(ends[0]);
        far = FileDescriptor(ends[1]);
    }

    void readInto(Bytes& received, std::size_t most) const {
        Bytes piece(most);
        const auto count = recv(far.number(), piece.data(), piece.size(), MSG_DONTWAIT);
        if (count > 0) received.insert(received.end(), piece.begin(), piece.begin() + count);
    }

    FileDescriptor near;
    FileDescriptor far;
    OutgoingBytes outgoing;
};

TEST_F(Outgoing, SlowReaderGetsEveryByteInOrderWhateverTheSizesOfFrames) {
    Bytes sent;
    for (const std::size_t size : {1u, 0u, 100u, 65536u, 65535u, 3u, 5000000u, 200000u, 64u, 64u}) {
        Bytes frame(size);
        std::iota(frame.begin(), frame.end(), static_cast<std::uint8_t>(sent.size() % 251));
        sent.insert(sent.end(), frame.begin(), frame.end());
        outgoing.append(std::move(frame));
    }
    Bytes received;
    for (int turns = 0; received.size() < sent.size() && turns < 100000; ++turns) {
        EXPECT_NE(outgoing.writeTo(near.number()), OutgoingBytes::State::broken);
        readInto(received, 77777);
    }
    EXPECT_EQ(outgoing.writeTo(near.number()), OutgoingBytes::State::drained);
    EXPECT_TRUE(outgoing.empty());
    EXPECT_TRUE(received == sent);
}

TEST_F(Outgoing, ReaderThatHasGoneIsABrokenSocketNotASignal) {
    far = {};
    outgoing.append(Bytes(10));
    EXPECT_EQ(outgoing.writeTo(near.number()), OutgoingBytes::State::broken);
}

TEST_F(Outgoing, OneWriteToAGreedyReaderIsBounded) {
    for (int i = 0; i < 1000; ++i)
        outgoing.append(Bytes(70000));
    Bytes received;
    EXPECT_EQ(outgoing.writeTo(near.number()), OutgoingBytes::State::waiting);
    readInto(received, 70000000);
    EXPECT_LT(received.size(), 70000000u);
}

} // namespace
} // namespace platform
