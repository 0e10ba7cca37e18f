#include "flutter/allocated.h"
#include "flutter/frame.h"
#include "flutter/hex.h"

#include <gmock/gmock.h>

using namespace flutter;
using testing::HasSubstr;

namespace {

const std::vector<Frame> frames = {
    {FrameKind::request, 7, "some/channel", {1, 2, 3}},
    {FrameKind::message, 0, "", {}},
    {FrameKind::reply, 0xfedcba98, "", {}},
    {FrameKind::message, 0, "größe", Bytes(100'000, 9)},
};

std::vector<Frame> read(FrameReader& reader, const Bytes& bytes, std::size_t piece) {
    std::vector<Frame> got;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        reader.feed(std::span(bytes).subspan(at, std::min(piece, bytes.size() - at)));
        while (auto frame = reader.next())
            got.push_back(std::move(*frame));
    }
    return got;
}

TEST(Frame, HasTheDocumentedBytes) {
    EXPECT_EQ(encodeFrame({FrameKind::request, 0x01020304, "ab", {0xff}}),
              hex("0a000000 01 04030201 0200 6162 ff"));
    EXPECT_EQ(encodeFrame({FrameKind::reply, 5, "", {0xff}}), hex("06000000 03 05000000 ff"));
}

TEST(Frame, ArrivesWholeInWhateverPiecesItsBytesCome) {
    Bytes stream;
    for (const auto& frame : frames)
        stream = std::move(stream) + *encodeFrame(frame);
    for (const std::size_t piece : {std::size_t{1}, std::size_t{3}, std::size_t{4096}, stream.size()}) {
        FrameReader reader;
        EXPECT_EQ(read(reader, stream, piece), frames) << piece;
        EXPECT_EQ(reader.error(), std::nullopt);
    }
}

TEST(Frame, TakesTimeInProportionToABacklogThatIsReadFrameByFrame) {
    const auto one = *encodeFrame({FrameKind::message, 0, "c", {}});
    Bytes backlog;
    for (int count = 0; count < 200'000; ++count)
        backlog.insert(backlog.end(), one.begin(), one.end());
    FrameReader reader;
    reader.feed(backlog);
    for (int count = 0; count < 200'000; ++count) {
        reader.feed(one);
        ASSERT_TRUE(reader.next());
    }
}

TEST(Frame, ThatBreaksTheRulesEndsTheStreamWithOneLine) {
    const struct {
        const char* bytes;
        const char* reason;
    } broken[] = {
        {"01000004", "67108865 bytes"},
        {"04000000", "length counts everything"},
        {"09000000 04", "kind 4"},
        {"09000000 00", "kind 0"},
        {"06000000 01 00000000 00", "runs past"},
        {"08000000 02 00000000 0200 61", "runs past"},
    };
    for (const auto& [bytes, reason] : broken) {
        FrameReader reader;
        EXPECT_EQ(read(reader, *encodeFrame(frames[0]) + hex(bytes), 1).size(), 1U);
        EXPECT_THAT(reader.error().value_or(""), HasSubstr(reason));
        EXPECT_EQ(read(reader, *encodeFrame(frames[0]), 1).size(), 0U) << "a failed stream went on";
    }
}

TEST(Frame, HoldsNoMoreMemoryThanArrived) {
    FrameReader reader;
    const auto before = allocatedBytes();
    read(reader, hex("00000004 02") + Bytes(1000, 0), 1);
    EXPECT_LT(allocatedBytes() - before, 10'000U);
    EXPECT_EQ(reader.error(), std::nullopt);
}

TEST(Frame, TooLongForTheWireIsNotWritten) {
    EXPECT_TRUE(encodeFrame({FrameKind::reply, 1, "", Bytes(maxFrameLength - 5)}));
    EXPECT_FALSE(encodeFrame({FrameKind::reply, 1, "", Bytes(maxFrameLength - 4)}));
    EXPECT_FALSE(encodeFrame({FrameKind::message, 0, std::string(65536, 'n'), {}}));
}

} // namespace
