// What the interface can do with the main window. When the window is gone, every operation does nothing and
// is answered all the same.
#include "desktop/desktop_bridge.h"
#include "flutter/arguments.h"
#include "platform/application.h"

#include <algorithm>

void DesktopBridge::show() {
    platform::Application::sharedApplication().activate();
    const auto window = window_.lock();
    if (!window) return;
    window->deminiaturize();
    window->makeKeyAndOrderFront();
}

void DesktopBridge::show(Arguments, Result result) {
    show();
    result.success();
}

// The window is minimised, not taken off the screen, so that the user can bring it back without the hot key.
void DesktopBridge::close() {
    channel_.invokeMethod("close", flutter::EncodableMap{});
    if (const auto window = window_.lock()) window->miniaturize();
}

void DesktopBridge::hide(Arguments, Result result) {
    close();
    result.success();
}

void DesktopBridge::pin(Arguments arguments, Result result) {
    const bool pinned = flutter::asBool(arguments).value_or(false);
    if (const auto window = window_.lock())
        window->setLevel(pinned ? platform::FloatingWindowLevel : platform::NormalWindowLevel);
    result.success();
}

void DesktopBridge::growHeight(Arguments arguments, Result result) {
    const double points = flutter::asDouble(arguments).value_or(0);
    if (points > 0) growHeight(points);
    result.success();
}

// The window grows downwards within the visible area of its screen. Its top edge stays, but is moved down
// when it is above the area, and up when the window would reach below it.
void DesktopBridge::growHeight(double points) {
    const auto window = window_.lock();
    if (!window || window->styleMask() & platform::WindowStyleMaskFullScreen || window->isZoomed()) return;
    auto screen = window->screen();
    if (!screen) screen = platform::Screen::mainScreen();
    if (!screen) return;

    const auto visible = screen->visibleFrame();
    const auto frame = window->frame();
    const double height = std::min(frame.height + points, visible.height);
    const double top = std::min(frame.top(), visible.top());
    const double bottom = std::max(visible.y, top - height);
    window->setFrame({frame.x, bottom, frame.width, height}, true);
}
