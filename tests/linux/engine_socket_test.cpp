#include "linux/run_until.h"
#include "platform/linux/interface/engine_socket.h"
#include "platform/outgoing_messages.h"
#include "testing/desktop/local_socket.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/socket.h>

#include <cstdlib>
#include <filesystem>
#include <numeric>
#include <thread>

namespace platform {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

// An engine socket that records the bytes and the end it is told of.
struct EngineSocketTest : testing::Test {
    EngineSocketTest() {
        std::string whyNot;
        socket = EngineSocket::listen({[this](std::span<const std::uint8_t> bytes) {
                                           largestPiece = std::max(largestPiece, bytes.size());
                                           received.insert(received.end(), bytes.begin(), bytes.end());
                                           return std::nullopt;
                                       },
                                       [this](std::optional<std::string> why) {
                                           ended = true;
                                           whyEnded = std::move(why);
                                       }},
                                      whyNot);
        EXPECT_TRUE(socket) << whyNot;
    }

    void connectClient() {
        client = FileDescriptor(testbed::connectTo(socket->path()));
        runUntil([this] { return socket->connected(); });
    }

    void clientSends(const Bytes& bytes) const {
        EXPECT_EQ(send(client.number(), bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }

    // Everything until the host closes the connection. An error appends 0xEE, which the host never sends
    // here.
    Bytes clientReadsToTheEnd() const {
        Bytes all, piece(1 << 20);
        ssize_t count = 0;
        while ((count = recv(client.number(), piece.data(), piece.size(), 0)) > 0)
            all.insert(all.end(), piece.begin(), piece.begin() + count);
        if (count < 0) all.push_back(0xEE);
        return all;
    }

    Bytes received;
    std::size_t largestPiece = 0;
    bool ended = false;
    std::optional<std::string> whyEnded;
    std::unique_ptr<EngineSocket> socket;
    FileDescriptor client;
};

TEST_F(EngineSocketTest, OnlyThisUserCanReachTheSocketAndItsFolderIsRemoved) {
    const auto folder = fs::path(socket->path()).parent_path();
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    socket.reset();
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(EngineSocketTest, SecondConnectionIsRefusedAndTheFirstGoesOn) {
    connectClient();
    EXPECT_EQ(testbed::connectTo(socket->path()), -1);
    clientSends({1, 2, 3});
    runUntil([this] { return received.size() == 3; });
}

TEST_F(EngineSocketTest, BytesWrittenBeforeTheConnectionAndJustBeforeTheEndArrive) {
    socket->write({1});
    connectClient();
    clientSends({9}); // unread bytes must not turn the end into an error
    socket->write({2});
    socket->close(500ms);
    EXPECT_EQ(clientReadsToTheEnd(), (Bytes{1, 2}));
}

TEST_F(EngineSocketTest, CloseWaitsForAReadingClientAndFramesOfAllSizesArriveInOrder) {
    connectClient();
    Bytes sent, arrived;
    for (const std::size_t size : {1u, 0u, 100u, 65536u, 65535u, 3u, 5000000u, 200000u, 64u, 64u}) {
        Bytes frame(size);
        std::iota(frame.begin(), frame.end(), static_cast<std::uint8_t>(sent.size() % 251));
        sent.insert(sent.end(), frame.begin(), frame.end());
        socket->write(std::move(frame));
    }
    std::jthread reader([&] { arrived = clientReadsToTheEnd(); });
    socket->close(10s);
    reader.join();
    EXPECT_TRUE(arrived == sent);
}

TEST_F(EngineSocketTest, CloseWaitsNoLongerThanItsLimitForAClientThatDoesNotRead) {
    connectClient();
    socket->write(Bytes(5000000));
    const TimePoint start = now();
    socket->close(50ms);
    EXPECT_LT(now() - start, 5s);
}

TEST_F(EngineSocketTest, SaysWhenTheClientHasTakenEverythingOrIsGone) {
    connectClient();
    int taken = 0;
    const auto ask = [&] { OutgoingMessages::whenTaken([&] { ++taken; }); };
    ask();
    runUntil([&] { return taken == 1; });
    socket->write(Bytes(5000000));
    ask();
    Bytes piece(100'000);
    ssize_t read = 0;
    runUntil([&] {
        read += std::max<ssize_t>(0, recv(client.number(), piece.data(), piece.size(), MSG_DONTWAIT));
        return taken == 2;
    });
    EXPECT_GT(read, 4'000'000); // the rest is in the kernel's buffers
    socket->write(Bytes(5000000));
    ask();
    client = {};
    runUntil([&] { return taken == 3 && ended; });
}

TEST_F(EngineSocketTest, FloodIsReadInPiecesWithOtherEntriesBetweenThem) {
    connectClient();
    std::jthread flooder([this] {
        const Bytes piece(1 << 20);
        for (int i = 0; i < 32; ++i)
            clientSends(piece);
    });
    int otherTurns = 0;
    std::function<void()> other = [&] {
        ++otherTurns;
        if (received.size() < std::size_t{32} << 20) MainQueue::async(other);
    };
    other();
    runUntil([&] { return received.size() == std::size_t{32} << 20; });
    EXPECT_LE(largestPiece, 65536u);
    EXPECT_GE(otherTurns, 32 * 16);
    runUntil([] { return g_main_context_pending(nullptr) == FALSE; });
}

TEST_F(EngineSocketTest, EndOfTheConnectionIsReportedAfterAllBytes) {
    connectClient();
    clientSends(Bytes(200000));
    client = {};
    socket->write({1}); // must not raise SIGPIPE
    runUntil([this] { return ended; });
    EXPECT_EQ(received.size(), 200000u);
    EXPECT_EQ(whyEnded, std::nullopt);
}

TEST_F(EngineSocketTest, NoBytesArriveWhileAnEntryRunsAMainLoopOfItsOwn) {
    connectClient();
    bool inside = false;
    MainQueue::async([&] {
        inside = true;
        clientSends({1});
        for (const TimePoint end = now() + 20ms; now() < end;)
            g_main_context_iteration(nullptr, FALSE);
        EXPECT_TRUE(received.empty());
        inside = false;
    });
    runUntil([&] { return !inside && received.size() == 1; });
}

TEST(SocketFolder, NextHostRemovesTheFolderOfAKilledHostButNotOfARunningOne) {
    const testbed::TemporaryFolder folder;
    const fs::path base = folder / "";
    fs::create_directories(base / "quillmark-host.killed");
    fs::create_directories(base / "someone-elses");
    fs::create_symlink("nowhere", base / "quillmark-host.killed" / "engine");
    const std::string former = std::getenv("XDG_RUNTIME_DIR");
    setenv("XDG_RUNTIME_DIR", base.c_str(), 1);
    std::string whyNot;
    const auto live = SocketFolder::create(whyNot);
    fs::create_symlink("nowhere", live->socketPath());
    EXPECT_FALSE(fs::exists(base / "quillmark-host.killed"));
    {
        const auto next = SocketFolder::create(whyNot);
        EXPECT_TRUE(fs::exists(fs::path(live->socketPath()).parent_path()));
        EXPECT_TRUE(fs::exists(base / "someone-elses"));
    }
    setenv("XDG_RUNTIME_DIR", former.c_str(), 1);
}

} // namespace
} // namespace platform
