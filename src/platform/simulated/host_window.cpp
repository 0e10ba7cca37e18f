#include "platform/simulated/host_window.h"

#include "platform/simulated/world.h"

#include <algorithm>

namespace platform {

using simulated::World;

void Window::Native::userPressesCloseButton() { atNextTurn(&Native::close); }
void Window::Native::userEntersFullScreen() { atNextTurn(&Native::enterFullScreen); }
void Window::Native::userExitsFullScreen() { atNextTurn(&Native::exitFullScreen); }

void Window::Native::place(Rect newFrame) {
    frame = newFrame;
    const bool ordinary = !zoomed && !miniaturized && (styleMask & WindowStyleMaskFullScreen) == 0;
    if (!frameAutosaveName.empty() && ordinary) World::current().savedFrames[frameAutosaveName] = frame;
}

// Does nothing when the window has been destroyed by then.
void Window::Native::atNextTurn(void (Native::*act)()) {
    World::current().clock.async([this, act, &window = window] {
        const auto& existing = World::current().hostWindows;
        if (std::ranges::find(existing, &window) != existing.end()) (this->*act)();
    });
}

void Window::Native::close() {
    if (delegate != nullptr && !delegate->windowShouldClose()) return;
    World& world = World::current();
    closed = true;
    visible = false;
    const bool last =
        std::ranges::none_of(world.hostWindows, [](Window* other) { return other->native().visible; });
    if (last && world.applicationDelegate != nullptr &&
        world.applicationDelegate->applicationShouldTerminateAfterLastWindowClosed()) {
        Application::sharedApplication().terminate();
    }
}

void Window::Native::enterFullScreen() {
    if (styleMask & WindowStyleMaskFullScreen) return;
    frameBeforeFullScreen = frame;
    styleMask |= WindowStyleMaskFullScreen;
    if (const auto screen = Screen::mainScreen()) place(screen->visibleFrame());
    if (delegate != nullptr) delegate->windowDidEnterFullScreen();
}

void Window::Native::exitFullScreen() {
    if ((styleMask & WindowStyleMaskFullScreen) == 0) return;
    styleMask &= ~WindowStyleMaskFullScreen;
    place(frameBeforeFullScreen);
    if (delegate != nullptr) delegate->windowDidExitFullScreen();
}

} // namespace platform
