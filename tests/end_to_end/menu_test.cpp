// The menu bar as the person in front of it uses it, with the keyboard.
#include "rig/desktop.h"
#include "rig/fields.h"
#include "rig/host.h"

#include <gtest/gtest.h>

namespace e2e {

using namespace rig;

namespace {

class HostMenu : public testing::Test {
protected:
    void SetUp() override { window = host.bringToFront(desktop); }

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

    Desktop desktop;
    Host host;
    WindowId window = 0;
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

TEST_F(HostMenu, FullScreenAndBackByItsKeyAndMinimizeByItsItem) {
    desktop.keyboard.press("F11");
    EXPECT_TRUE(waitUntil([&] { return desktop.hasState(window, "_NET_WM_STATE_FULLSCREEN"); }));
    desktop.keyboard.press("F11");
    EXPECT_TRUE(waitUntil([&] { return !desktop.hasState(window, "_NET_WM_STATE_FULLSCREEN"); }));
    choose(3, 0);
    EXPECT_TRUE(waitUntil([&] { return desktop.isHidden(window); }));
}

} // namespace
} // namespace e2e
