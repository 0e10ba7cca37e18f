// The menu bar as the person in front of it uses it, with the keyboard.
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"
#include "testing/desktop/screen_reader.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace testbed;

namespace {

struct HostMenu : testing::Test {
    // Opens the menu that many places from the left and chooses its item that many selectable ones from the
    // top.
    void choose(int menu, int item) {
        desktop.keyboard.press("F10");
        for (; menu > 0; --menu)
            desktop.keyboard.press("Right");
        for (; item >= 0; --item)
            desktop.keyboard.press("Down");
        desktop.keyboard.press("Return");
    }

    // Again and again: xfwm4 4.18 may take the keyboard for a moment after it has brought the window back,
    // and GTK closes the menu.
    bool opensMenu() {
        return waitUntil([&] {
            desktop.keyboard.press("F10");
            return waitUntil([&] { return desktop.openMenu().has_value(); }, milliseconds(500));
        });
    }

    Desktop desktop;
    Host host;
    WindowId window = host.bringToFront(desktop);
};

TEST_F(HostMenu, EditItemsReachTheViewThatTakesTheKeys) {
    Fields view(desktop, {"--into", host.view(), "entry=one two"});
    const auto shows = [&](const std::string& state) {
        return waitUntil([&] { return view.dump().find(state) != std::string::npos; });
    };
    choose(1, 5);
    EXPECT_TRUE(shows("[0, 7]")) << "nothing was selected: " << view.dump();
    choose(1, 2);
    EXPECT_TRUE(shows("\"text\": \"\"")) << "nothing was cut: " << view.dump();
    EXPECT_EQ(desktop.text("CLIPBOARD"), "one two");
    choose(1, 4);
    choose(1, 4);
    EXPECT_TRUE(shows("one twoone two")) << "nothing was pasted: " << view.dump();
}

TEST_F(HostMenu, FullScreenAndBackByKeyAndByItemRelabelsTheItemEachTime) {
    const std::string longLabel = "Leave the full screen and go back to the ordinary window";
    host.call("localize",
              flutter::EncodableMap{{"nativeFullScreen", "Fill"}, {"nativeExitFullScreen", longLabel}});
    // By its width: the other menus on the way are neither so narrow nor so wide. Opened again and again,
    // since one that is open when its label changes stays as wide as it was.
    const auto viewMenuIs = [&](int least, int most) {
        return waitUntil([&] {
            for (const char* key : {"F10", "Right", "Right"})
                desktop.keyboard.press(key);
            const bool shown = waitUntil(
                [&] {
                    const auto menu = desktop.openMenu();
                    return menu && menu->width >= least && menu->width <= most;
                },
                milliseconds(500));
            desktop.keyboard.press("Escape");
            return waitUntil([&] { return !desktop.openMenu(); }) && shown;
        });
    };
    const auto fillsTheScreen = [&] { return desktop.hasState(window, "_NET_WM_STATE_FULLSCREEN"); };
    EXPECT_TRUE(viewMenuIs(50, 180));
    desktop.keyboard.press("F11");
    EXPECT_TRUE(waitUntil(fillsTheScreen));
    EXPECT_TRUE(viewMenuIs(300, 1000)) << "it still says how to enter";
    choose(2, 0);
    EXPECT_TRUE(waitUntil([&] { return !fillsTheScreen(); }));
    EXPECT_TRUE(viewMenuIs(50, 180)) << "it still says how to leave";
    choose(3, 0);
    EXPECT_TRUE(waitUntil([&] { return desktop.isHidden(window); }));
}

TEST_F(HostMenu, ClosesWithTheWindowAndWithTheHost) {
    ASSERT_TRUE(opensMenu());
    host.call("hide");
    EXPECT_TRUE(waitUntil([&] { return desktop.isHidden(window) && !desktop.openMenu(); }));
    host.bringToFront(desktop);
    ASSERT_TRUE(opensMenu());
    host.process().signal(SIGTERM);
    EXPECT_TRUE(host.process().exitStatus().has_value());
    EXPECT_EQ(host.process().output(), "");
}

TEST_F(HostMenu, ZoomsAndBackAndTellsWhatTheProgramIs) {
    const auto fillsTheDesktop = [&] { return desktop.hasState(window, "_NET_WM_STATE_MAXIMIZED_VERT"); };
    choose(3, 1);
    EXPECT_TRUE(waitUntil(fillsTheDesktop));
    choose(3, 1);
    EXPECT_TRUE(waitUntil([&] { return !fillsTheDesktop(); }));

    ScreenReader screen(host.process().pid());
    const auto showsThePanel = [&] {
        constexpr milliseconds once(0);
        return screen.shows("dialog", "About Quillmark", once) ||
               screen.shows("dialog", "About 글빛나래 · Quillmark", once); // where a font has Hangul
    };
    for (int time = 0; time < 2; ++time) {
        choose(0, 0);
        ASSERT_TRUE(waitUntil([&] { return showsThePanel() && desktop.activeWindow() != window; }));
        desktop.keyboard.press("Escape");
        EXPECT_TRUE(waitUntil([&] { return desktop.activeWindow() == window; })) << "the panel stays";
    }
}

} // namespace
