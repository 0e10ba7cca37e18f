// How the host's life begins, goes on and ends: a second start, and every way to be asked to quit.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/startup_messages.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <cstring>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableValue;
using testing::AllOf;
using testing::HasSubstr;

const CallOutcome null = EncodableValue();

// The second start says so in one line, also that it does not serve the interface that it was given.
TEST(HostLife, ASecondStartShowsTheFirstAndEndsAtOnce) {
    Desktop desktop;
    Host first;
    const auto window = first.bringToFront(desktop);
    StartupMessages startups;
    const auto process = "process " + std::to_string(first.process().pid());
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "brought to the front."},
        {{"/bin/false"}, "/bin/false"},
        {{"no-such-program"}, "no-such-program"},
    };
    for (const auto& [interface, says] : cases) {
        first.call("hide");
        ASSERT_TRUE(waitUntil([&] { return desktop.isHidden(window); }));
        std::vector<std::string> command{hostProgram()};
        command.insert(command.end(), interface.begin(), interface.end());
        Process second(command, {{"DESKTOP_STARTUP_ID", "start-up-of-the-second"}});
        EXPECT_EQ(second.exitStatus(), 0) << second.output();
        EXPECT_THAT(second.output(), AllOf(HasSubstr(process), HasSubstr(says)));
        EXPECT_EQ(std::ranges::count(second.output(), '\n'), 1) << second.output();
        EXPECT_TRUE(waitUntil([&] { return !desktop.isHidden(window) && desktop.activeWindow() == window; }));
        EXPECT_THAT(startups.next(), HasSubstr("start-up-of-the-second"));
    }
    EXPECT_FALSE(first.process().exitStatus(milliseconds(0)));
}

TEST(HostLife, StartsWithoutItsWindowWhenAskedToAndShowsItAtASecondStart) {
    Desktop desktop;
    StartupMessages startups;
    Host host({{"DESKTOP_STARTUP_ID", "start-up-at-login"}}, {{"--background"}});
    EXPECT_EQ(host.call("pin", false), null);
    EXPECT_THAT(startups.next(), HasSubstr("start-up-at-login"));
    Process greeting({hostProgram(), "--background"});
    EXPECT_EQ(greeting.exitStatus(), 0);
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
    EXPECT_THAT(second.output(), HasSubstr("kill -KILL " + std::to_string(stopped.process().pid())));
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
