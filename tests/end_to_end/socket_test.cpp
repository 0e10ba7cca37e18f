// The socket between the host and its interface, and how their lives hang together.
#include "flutter/standard_codec.h"
#include "rig/host.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <sstream>

namespace e2e {

using namespace rig;

namespace {

using flutter::CallOutcome;
using flutter::EncodableMap;
using flutter::EncodableValue;
using flutter::FrameKind;
using flutter::NotImplemented;

TEST(Socket, UnreadableCallsAndUnknownChannelsGetAnEmptyReply) {
    Host host;
    EXPECT_EQ(host.call("anything", {}, "nobody.listens/here"), CallOutcome(NotImplemented{}));
    std::uint32_t id = 100;
    for (const std::vector<std::uint8_t>& payload : {std::vector<std::uint8_t>{},
                                                     {0x07, 0x05, 'p', 'i'},
                                                     {0x00, 0x00},
                                                     {0x07, 0x03, 'p', 'i', 'n', 0x01, 0x01}}) {
        host.send({FrameKind::request, ++id, std::string(desktopChannel), payload});
        EXPECT_EQ(host.answer(id), CallOutcome(NotImplemented{}));
    }
}

TEST(Socket, ABrokenFrameEndsTheConnectionWithALineThatSaysWhy) {
    const std::vector<std::vector<std::uint8_t>> broken{
        {0xff, 0xff, 0xff, 0xff, 1, 0, 0, 0, 0},           // longer than allowed
        {5, 0, 0, 0, 9, 0, 0, 0, 0},                       // an unknown kind
        {9, 0, 0, 0, 1, 1, 0, 0, 0, 0xff, 0x00, 'a', 'b'}, // a name that runs past the frame
        {5, 0, 0, 0, 3, 42, 0, 0, 0},                      // a reply to nothing
    };
    for (const auto& bytes : broken) {
        Host host;
        host.send(bytes);
        EXPECT_TRUE(host.closes());
        host.exitInterface(0);
        EXPECT_TRUE(host.process().exitStatus());
        EXPECT_NE(host.process().output(), "");
    }
}

// The number of the display that a server of the test's own serves.
std::string displayOf(const Process& server) {
    std::string number;
    waitUntil([&] {
        std::istringstream lines(server.output());
        for (std::string line; std::getline(lines, line);)
            if (line.find_first_not_of("0123456789") == std::string::npos) number = line;
        return !number.empty();
    });
    return ":" + number;
}

TEST(Socket, NothingIsLeftBehindWhenTheDisplayGoes) {
    for (const bool initialized : {false, true}) {
        Process server({"Xvfb", "-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
        Host host({{"DISPLAY", displayOf(server)}});
        if (initialized) host.call("initialize", EncodableMap{});
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
} // namespace e2e
