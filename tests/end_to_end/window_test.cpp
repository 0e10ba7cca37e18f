// The host's window as the person in front of it sees it.
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"
#include "testing/desktop/process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableMap;
using flutter::EncodableValue;

// True once it holds and goes on holding, so that what the window manager does late is seen too.
bool staysTrue(const std::function<bool()>& condition) {
    constexpr milliseconds quietTime{300};
    return waitUntil([&] {
        return waitUntil(condition, milliseconds(0)) && !waitUntil([&] { return !condition(); }, quietTime);
    });
}

// What GTK draws outside the window where there is a compositing manager.
constexpr int shadow = 40;

// The screen as it is after a monitor has gone, while the object lives.
class SmallerScreen {
public:
    SmallerScreen(int width, int height) {
        const std::string w = std::to_string(width), h = std::to_string(height);
        run({"xrandr", "--newmode", "smaller", "0", w, w, w, w, h, h, h, h});
        run({"xrandr", "--addmode", "screen", "smaller"});
        run({"xrandr", "--output", "screen", "--mode", "smaller"});
    }
    ~SmallerScreen() {
        run({"xrandr", "--output", "screen", "--auto"});
        run({"xrandr", "--delmode", "screen", "smaller"});
        run({"xrandr", "--rmmode", "smaller"});
    }
    SmallerScreen(const SmallerScreen&) = delete;
    SmallerScreen& operator=(const SmallerScreen&) = delete;

private:
    static void run(const std::vector<std::string>& command) {
        Process program(command);
        EXPECT_EQ(program.exitStatus(), 0) << program.output();
    }
};

struct HostWindow : testing::Test {
    bool isActive() { return desktop.activeWindow() == window; }

    Desktop desktop;
    Host host;
    WindowId window = host.bringToFront(desktop);
};

const CallOutcome null = EncodableValue();

TEST_F(HostWindow, IsFoundInItsDesktopFileAndHasAnIcon) {
    EXPECT_THAT(readFile(QUILLMARK_DESKTOP_FILE),
                testing::HasSubstr("StartupWMClass=" + desktop.className(window) + "\n"));
    EXPECT_TRUE(desktop.hasIcon(window));
}

TEST_F(HostWindow, IsAsTheLastCallOfABurstWantedIt) {
    Fields fields(desktop, {"entry"}); // a window to lose the focus to
    const std::vector<std::string> bursts[] = {
        {"show", "hide", "show"}, {"hide", "show"}, {"show", "hide"}, {"hide", "show", "hide"}, {"show"}};
    for (const auto pause : {milliseconds(0), milliseconds(7)})
        for (const auto& burst : bursts) {
            for (const auto& call : burst) {
                host.startCall(call);
                std::this_thread::sleep_for(pause);
            }
            const bool shown = burst.back() == "show";
            EXPECT_TRUE(staysTrue([&] {
                return shown ? isActive() && !desktop.isHidden(window) : desktop.isHidden(window);
            })) << ::testing::PrintToString(burst)
                << " with pauses of " << pause.count() << " ms";
            if (std::ranges::count(burst, "hide") != 0) {
                EXPECT_EQ(host.nextCall("close"), EncodableValue(EncodableMap{}));
            }
        }
}

TEST_F(HostWindow, FillsTheScreenAsTheLastPressOfTheKeyForItWantedIt) {
    const auto fillsTheScreen = [&] { return desktop.hasState(window, "_NET_WM_STATE_FULLSCREEN"); };
    for (const char* key : {"F11", "F11"})
        desktop.keyboard.press(key);
    EXPECT_TRUE(staysTrue([&] { return !fillsTheScreen(); }));
    for (const char* key : {"F11", "F11", "F11"})
        desktop.keyboard.press(key);
    EXPECT_TRUE(staysTrue(fillsTheScreen));
}

TEST_F(HostWindow, ComesToTheWorkspaceThePersonIsOn) {
    const auto isHereOn = [&](unsigned long workspace) {
        return desktop.workspace() == workspace && desktop.workspace(window) == workspace && isActive();
    };
    ASSERT_TRUE(desktop.goToWorkspace(1));
    host.call("show");
    EXPECT_TRUE(waitUntil([&] { return isHereOn(1); })) << "an open window did not come";
    host.call("hide");
    EXPECT_TRUE(waitUntil([&] { return desktop.isHidden(window); }));
    ASSERT_TRUE(desktop.goToWorkspace(0));
    host.call("show");
    EXPECT_TRUE(waitUntil([&] { return isHereOn(0); })) << "a minimised window did not come";
}

TEST_F(HostWindow, GrowsDownwardsUntilItFillsTheScreenFromTopToBottom) {
    const auto before = desktop.place(window);
    EXPECT_EQ(host.call("growHeight", 20), null);
    EXPECT_TRUE(waitUntil([&] { return desktop.place(window).height == before.height + 20; }));
    EXPECT_EQ(desktop.place(window).y, before.y) << "its top moved";
    EXPECT_EQ(host.call("growHeight", 5000), null);
    EXPECT_TRUE(waitUntil([&] { return desktop.place(window).height > before.height + 40; }));
    const int filled = desktop.place(window).height;
    EXPECT_EQ(host.call("growHeight", 5000), null);
    EXPECT_EQ(desktop.place(window).height, filled);
}

TEST_F(HostWindow, MovesOntoWhatIsLeftOfTheScreen) {
    const SmallerScreen smaller(700, 800);
    EXPECT_TRUE(staysTrue([&] {
        const auto place = desktop.place(window);
        return place.x >= -shadow && place.x + place.width <= 700 + shadow;
    })) << desktop.place(window).x;
}

TEST_F(HostWindow, TakesItsTitleFromTheInterface) {
    EXPECT_EQ(host.call("localize", EncodableMap{{"tooltip", "\xE6\x96\x87"}, {"nativeView", "V"}}), null);
    EXPECT_TRUE(waitUntil([&] { return desktop.title(window) == "\xE6\x96\x87"; })) << desktop.title(window);
}

TEST_F(HostWindow, ItsCloseButtonAsksTheInterface) {
    host.call("initialize");
    desktop.close(window);
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("cancelQuit"), null);
    EXPECT_FALSE(desktop.isHidden(window)) << "it closed although the interface refused";

    desktop.close(window);
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("quit"), null) << "the answer must come before the end";
    EXPECT_EQ(host.process().exitStatus(), 0);
}

} // namespace
