// Closing the window and the status icon.
#include "interface/writer.h"
#include "testing/desktop/key_grab.h"
#include "testing/desktop/status_area.h"

#include <X11/Xlib.h>

#include <stdexcept>

namespace testbed {
namespace {

struct Closing : Writer {
    void TearDown() override {
        putPointer(0, 0);
        Writer::TearDown();
    }
    void putPointer(int x, int y) {
        auto* display = desktop.keyboard.display();
        XWarpPointer(display, None, DefaultRootWindow(display), 0, 0, 0, 0, x, y);
        XSync(display, False);
    }
    // With the pointer on it, as it is for who presses it.
    void pressCloseButton() {
        const auto place = desktop.place(window());
        putPointer(place.x + place.width - 20, place.y + 16);
        desktop.close(window());
    }
};

bool hotKeyIsFree() {
    try {
        const KeyGrab another("space", Mod1Mask | ShiftMask);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

TEST_F(Closing, HidesToTheStatusIconAndSaysSoOnce) {
    StatusArea icons;
    start();
    ASSERT_TRUE(icons.hasIcon());
    pressCloseButton();
    EXPECT_TRUE(comes([&] { return isHidden(); }));
    const auto notice = notices.next();
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->title, "Quillmark goes on running");

    icons.choose("Show");
    EXPECT_TRUE(comes([&] { return isInFront(); }));
    putPointer(0, 0);
    desktop.keyboard.hold("Alt+F4");
    EXPECT_TRUE(comes([&] { return isHidden(); })) << "closed with the window manager's keys";
    desktop.keyboard.letGoAll();
    icons.choose("Settings …");
    EXPECT_TRUE(screen().shows("push button", "Help"));
    EXPECT_FALSE(notices.next(milliseconds(0))) << "said twice";

    icons.choose("Pause or resume the hot key");
    EXPECT_TRUE(comes(hotKeyIsFree));
    icons.choose("Quit");
    EXPECT_EQ(host->exitStatus(), 0) << host->output();
}

TEST_F(Closing, AsksWhereThereIsNoStatusIcon) {
    start();
    pressCloseButton();
    ASSERT_TRUE(hasKeyboard("push button", "Hide the window"));
    press("space");
    EXPECT_TRUE(comes([&] { return isHidden(); }));
    EXPECT_FALSE(host->exitStatus(milliseconds(0)));
}

} // namespace
} // namespace testbed
