#include "linux/front_key_window.h"
#include "linux/run_until.h"
#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/workspace.h"

#include <X11/Xutil.h>

namespace platform {
namespace {

// The colour at the upper left corner of the window in front.
unsigned long cornerColour() {
    auto* connection = x11::XlibConnection::shared();
    int x = 0;
    int y = 0;
    ::Window child = 0;
    const auto front = x11::frontWindow();
    XTranslateCoordinates(connection->display(), front ? front->window : 0, connection->root(), 0, 0, &x, &y,
                          &child);
    XImage* image = XGetImage(connection->display(), connection->root(), x, y, 1, 1, AllPlanes, ZPixmap);
    const unsigned long colour = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return colour;
}

TEST(Beep, FramesTheWindowInFrontForAMomentAndLeavesTheKeyboardThere) {
    FrontKeyWindow window;
    const auto before = cornerColour();
    const auto focused = x11::focusedWindow();
    beep();
    EXPECT_TRUE(testbed::waitUntil([&] { return cornerColour() != before; }));
    EXPECT_EQ(x11::focusedWindow(), focused);
    EXPECT_TRUE(runUntil([&] { return cornerColour() == before; }));
}

} // namespace
} // namespace platform
