// Requests to the running host from a command line, as a desktop's own shortcuts make them.
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"
#include "testing/desktop/key_grab.h"

#include <gmock/gmock.h>

#include <csignal>

using namespace testbed;

namespace {

using flutter::EncodableMap;
using testing::HasSubstr;
using testing::IsEmpty;

struct Said {
    int status;
    std::string text;
};

Said run(const std::vector<std::string>& options) {
    std::vector<std::string> command{hostProgram()};
    command.insert(command.end(), options.begin(), options.end());
    Process program(command);
    const int status = program.exitStatus().value_or(-1);
    return {status, program.output()};
}

constexpr unsigned altShift = 1 << 3 | 1 << 0; // Mod1Mask and ShiftMask

const char* const requests[] = {"--show", "--hide", "--capture", "--pause", "--quit"};

bool wasRegistered(const flutter::CallOutcome& answer) {
    return answer == flutter::CallOutcome(EncodableMap{{"hotkey_registered", true}});
}

TEST(HostControl, SaysSoWhenNoHostRunsOrItDoesNotAnswerOrTheRequestIsUnclear) {
    for (const char* request : requests) {
        const auto [status, text] = run({request});
        EXPECT_EQ(status, 3) << request;
        EXPECT_THAT(text, HasSubstr("no host runs"));
    }
    EXPECT_EQ(run({"--show", "/bin/true"}).status, 2);
    EXPECT_EQ(run({"--no-such-option"}).status, 2);
    EXPECT_EQ(run({"--sm-client-id"}).status, 2);

    Host stopped;
    stopped.process().signal(SIGSTOP);
    const auto [status, text] = run({"--hide"});
    EXPECT_EQ(status, 1);
    EXPECT_THAT(text, HasSubstr("kill -KILL " + std::to_string(stopped.process().pid())));
    stopped.process().signal(SIGCONT);
}

TEST(HostControl, ShowsHidesAndQuitsAsTheInterfaceOrThePersonWould) {
    Desktop desktop;
    Host host;
    const auto window = host.bringToFront(desktop);
    host.call("initialize");
    EXPECT_EQ(run({"--hide"}).status, 0);
    EXPECT_TRUE(waitUntil([&] { return desktop.isHidden(window); }));
    EXPECT_EQ(run({"--show"}).status, 0);
    EXPECT_TRUE(waitUntil([&] { return desktop.activeWindow() == window && !desktop.isHidden(window); }));
    EXPECT_EQ(run({"--quit"}).status, 0);
    ASSERT_TRUE(host.nextCall("quit"));
    host.call("cancelQuit");
    EXPECT_EQ(run({"--quit"}).status, 0);
    ASSERT_TRUE(host.nextCall("quit"));
    host.call("quit");
    EXPECT_EQ(host.process().exitStatus(), 0);
}

TEST(HostControl, CapturesWhereAnotherProgramHasTheHotKey) {
    Desktop desktop;
    Host host;
    const KeyGrab other("space", altShift);
    EXPECT_EQ(run({"--capture"}).status, 1) << "the interface has not said yet what is excluded";
    EXPECT_FALSE(wasRegistered(host.call("initialize")));
    Fields fields(desktop, {"entry=one two three"});
    fields.command("select 0 4 7");
    const auto [status, text] = run({"--capture"});
    EXPECT_EQ(status, 0);
    EXPECT_THAT(text, IsEmpty());
    const auto sent = host.nextCall("capture");
    ASSERT_TRUE(sent);
    EXPECT_EQ(textOf(*sent, "text"), "two");
}

TEST(HostControl, PauseGivesTheHotKeyToOthersUntilItIsUsedAgainOrTheHostIsShown) {
    Desktop desktop;
    Host host;
    ASSERT_TRUE(wasRegistered(host.call("initialize")));
    Fields fields(desktop, {"entry=one two three"});
    const auto captures = [&](milliseconds within = milliseconds(5000)) {
        desktop.keyboard.press("Alt+Shift+space");
        return host.nextCall("capture", within).has_value();
    };
    EXPECT_TRUE(captures());
    for (const char* end : {"--pause", "--show"}) {
        EXPECT_THAT(run({"--pause"}).text, HasSubstr("paused"));
        EXPECT_FALSE(captures(milliseconds(500)));
        EXPECT_EQ(run({end}).status, 0);
        ASSERT_TRUE(desktop.bringToFront(fields.process().pid()));
        EXPECT_TRUE(captures()) << "not resumed by " << end;
    }
    run({"--pause"});
    const KeyGrab other("space", altShift);
    const auto [status, text] = run({"--pause"});
    EXPECT_EQ(status, 1);
    EXPECT_THAT(text, HasSubstr("another program"));
}

} // namespace
