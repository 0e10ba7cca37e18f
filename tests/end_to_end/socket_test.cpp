// The socket between the host and its interface, and how their lives hang together.
#include "flutter/hex.h"
#include "testing/desktop/host.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <sstream>

using namespace testbed;

namespace {

TEST(Socket, ABrokenFrameEndsTheConnectionWithALineThatSaysWhy) {
    Host host;
    host.send(hex("05000000 09 00000000")); // an unknown kind
    EXPECT_TRUE(host.closes());
    host.exitInterface(0);
    EXPECT_TRUE(host.process().exitStatus());
    EXPECT_THAT(host.process().output(), testing::HasSubstr("kind 9"));
}

// The number of the display that a server of the test's own serves.
std::string displayOf(const Process& server) {
    std::string line;
    waitUntil([&] {
        std::istringstream said(server.output());
        while (std::getline(said, line) && !said.eof()) // the end: the line may not be whole yet
            if (!line.empty() && line.find_first_not_of("0123456789") == std::string::npos) return true;
        return false;
    });
    return ":" + line;
}

TEST(Socket, NothingIsLeftBehindWhenTheDisplayGoes) {
    for (const bool initialized : {false, true}) {
        Process server({"Xvfb", "-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
        Host host({{"DISPLAY", displayOf(server)}});
        if (initialized) host.call("initialize", flutter::EncodableMap{});
        server.signal(SIGKILL);
        EXPECT_EQ(host.process().exitStatus(), 1);
        const auto said = host.process().output();
        EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(host.socketPath()).parent_path()));
    }
}

TEST(Socket, TheHostEndsWithItsInterfaceAndWithItsStatus) {
    {
        Host host;
        host.exitInterface(7);
        EXPECT_EQ(host.process().exitStatus(), 7);
    }
    Host host;
    const std::string path = host.socketPath();
    host.disconnect();
    host.exitInterface(0);
    EXPECT_EQ(host.process().exitStatus(), 0);
    EXPECT_FALSE(std::filesystem::exists(path)) << "the socket was left behind";
}

} // namespace
