// How the host's life begins, goes on and ends: a second start, and every way to be asked to quit.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/startup_messages.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstring>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableValue;
using testing::HasSubstr;

const CallOutcome null = EncodableValue();

TEST(HostLife, ASecondStartShowsTheFirstAndEndsAtOnce) {
    Desktop desktop;
    Host first;
    const auto window = first.bringToFront(desktop);
    for (const char* interface : {"/bin/false", "no-such-program"}) {
        first.call("hide");
        ASSERT_TRUE(waitUntil([&] { return desktop.isHidden(window); }));
        Process second({hostProgram(), interface});
        EXPECT_EQ(second.exitStatus(), 0) << second.output();
        EXPECT_TRUE(waitUntil([&] { return !desktop.isHidden(window) && desktop.activeWindow() == window; }));
    }
    EXPECT_FALSE(first.process().exitStatus(milliseconds(0)));
}

TEST(HostLife, StartsWithoutItsWindowWhenAskedToAndShowsItAtASecondStart) {
    Desktop desktop;
    StartupMessages startups;
    Host host({{"DESKTOP_STARTUP_ID", "start-up-at-login"}}, {{"--background"}});
    EXPECT_EQ(host.call("pin", false), null);
    EXPECT_THAT(startups.next(), HasSubstr("start-up-at-login"));
    EXPECT_THAT(desktop.windows(host.process().pid()), testing::IsEmpty());
    Process second({hostProgram()});
    EXPECT_EQ(second.exitStatus(), 0);
    EXPECT_TRUE(waitUntil([&] {
        const auto shown = desktop.windows(host.process().pid());
        return !shown.empty() && desktop.activeWindow() == shown.front();
    }));
}

TEST(HostLife, NeedsAnXServerAndSaysWhatToDoWithoutOne) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"-u", "DISPLAY"}, "there is no display"},
        {{"DISPLAY=", "XDG_SESSION_TYPE=x11"}, "there is no display"},
        {{"-u", "DISPLAY", "WAYLAND_DISPLAY=wayland-0"}, "Wayland"},
        {{"-u", "DISPLAY", "XDG_SESSION_TYPE=wayland"}, "Wayland"},
        {{"DISPLAY=nonsense", "WAYLAND_DISPLAY=wayland-0"}, "nonsense cannot be opened"},
    };
    for (const auto& [environment, sentence] : cases) {
        std::vector<std::string> command{"env"};
        command.insert(command.end(), environment.begin(), environment.end());
        command.insert(command.end(), {hostProgram(), "/bin/false"});
        Process host(command);
        EXPECT_EQ(host.exitStatus(), 1);
        EXPECT_THAT(host.output(), HasSubstr(sentence));
    }
}

TEST(HostLife, AKilledHostLeavesThePlaceFreeAndAStoppedOneIsToldOf) {
    {
        Host killed;
        killed.process().signal(SIGKILL);
        ASSERT_TRUE(killed.process().exitStatus());
    }
    Host stopped;
    stopped.process().signal(SIGSTOP);
    Process second({hostProgram(), "/bin/false"});
    EXPECT_EQ(second.exitStatus(), 1);
    EXPECT_THAT(second.output(), HasSubstr("does not answer"));
    stopped.process().signal(SIGCONT);
    EXPECT_EQ(stopped.call("pin", false), null);
}

TEST(HostLife, EverySignalToEndIsPutToTheInterfaceFirst) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        Host host;
        host.call("initialize");
        host.process().signal(number);
        ASSERT_TRUE(host.nextCall("quit")) << strsignal(number);
        EXPECT_EQ(host.call("cancelQuit"), null);
        EXPECT_EQ(host.call("pin", false), null) << "it ended although the interface refused";

        host.process().signal(number);
        ASSERT_TRUE(host.nextCall("quit")) << strsignal(number);
        EXPECT_EQ(host.call("quit"), null) << "the answer must come before the end";
        EXPECT_EQ(host.process().exitStatus(), 0);
    }
}

TEST(HostLife, ASilentInterfaceIsWaitedForFifteenSeconds) {
    Host host;
    host.call("initialize");
    const auto asked = Clock::now();
    host.process().signal(SIGTERM);
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.process().exitStatus(milliseconds(20'000)), 0);
    const auto waited = Clock::now() - asked;
    EXPECT_GE(waited, milliseconds(14'900));
    EXPECT_LT(waited, milliseconds(18'000));
}

TEST(HostLife, TheQuitKeyIsPutToTheInterfaceOnceHoweverOftenItIsPressed) {
    Desktop desktop;
    Host host;
    host.call("initialize");
    host.bringToFront(desktop);
    desktop.keyboard.press("Control+q");
    ASSERT_TRUE(host.nextCall("quit"));
    desktop.keyboard.press("Control+q");
    EXPECT_FALSE(host.nextCall("quit", milliseconds(300)));
    EXPECT_EQ(host.call("quit"), null);
    EXPECT_EQ(host.process().exitStatus(), 0);
}

} // namespace
