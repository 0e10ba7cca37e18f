// The socket between the host and its interface, and how their lives hang together.
#include "flutter/hex.h"
#include "testing/desktop/host.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <regex>

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
    std::string said;
    std::smatch number;
    waitUntil(
        [&] { return std::regex_search(said = server.output(), number, std::regex("(^|\n)([0-9]+)\n")); });
    return ":" + number.str(2);
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
