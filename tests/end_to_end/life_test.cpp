// How the host's life begins, goes on and ends: a second start, and every way to be asked to quit.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/session.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstring>
#include <memory>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableValue;

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
        EXPECT_THAT(host.output(), testing::HasSubstr(sentence));
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
    EXPECT_THAT(second.output(), testing::HasSubstr("does not answer"));
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

TEST(HostLife, TheEndOfTheSessionIsPutToTheInterfaceFirst) {
    Session session;
    Host host(session.environment());
    host.call("initialize");
    ASSERT_EQ(session.next(), "joined") << host.process().output();
    EXPECT_EQ(session.next(), "agrees") << "to be saved, without asking anybody";

    session.askToEnd(false);
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("cancelQuit"), null);
    EXPECT_EQ(session.next(), "does not agree");

    session.askToEnd();
    EXPECT_EQ(session.next(), "asks to interact");
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("cancelQuit"), null);
    EXPECT_EQ(session.next(), "refuses");
    EXPECT_EQ(session.next(), "does not agree");
    EXPECT_EQ(host.call("pin", false), null) << "it ended although the interface refused";

    session.askToEnd();
    EXPECT_EQ(session.next(), "asks to interact");
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("quit"), null);
    host.exitInterface(0);
    EXPECT_EQ(session.next(), "has interacted");
    EXPECT_EQ(session.next(), "agrees");
    EXPECT_EQ(session.next(), "leaves");
    EXPECT_EQ(host.process().exitStatus(), 0);
    EXPECT_EQ(host.process().output(), "");
}

TEST(HostLife, AnEndCalledOffByOthersIsAnsweredOnceAndALostManagerIsNotMissed) {
    auto session = std::make_unique<Session>();
    Host host(session->environment());
    host.call("initialize");
    for (const char* expected : {"joined", "agrees"})
        ASSERT_EQ(session->next(), expected);
    session->askToEnd();
    EXPECT_EQ(session->next(), "asks to interact");
    ASSERT_TRUE(host.nextCall("quit"));
    session->callOff();
    EXPECT_EQ(session->next(), "has interacted");
    EXPECT_EQ(session->next(), "does not agree");
    EXPECT_EQ(host.call("cancelQuit"), null);

    session.reset();
    EXPECT_EQ(host.call("pin", false), null);
    host.exitInterface(0);
    EXPECT_EQ(host.process().exitStatus(), 0);
}

} // namespace
