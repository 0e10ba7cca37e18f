#include "system/close_gesture.h"

#include <X11/XKBlib.h>
#include <gdk/gdkx.h>

#include <array>
#include <memory>

namespace quillmark {

namespace {

struct Free {
    void operator()(Window* windows) const { XFree(windows); }
};

// The one that the window manager has put straight onto the screen: its frame, where it has one.
Window outermost(Display* display, Window window) {
    for (;;) {
        Window root = None, parent = None, *children = nullptr;
        unsigned count = 0;
        if (XQueryTree(display, window, &root, &parent, &children, &count) == 0) return None;
        const std::unique_ptr<Window, Free> owned(children);
        if (parent == root || parent == None) return window;
        window = parent;
    }
}

std::array<int, 2> positionOf(Display* display, Window window) {
    Window child = None;
    std::array<int, 2> place{};
    XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &place[0], &place[1], &child);
    return place;
}

bool pointerIsOnTitleBar(Display* display, Window view) {
    const Window frame = outermost(display, view);
    Window root = None, child = None;
    int x = 0, y = 0, unused = 0;
    unsigned buttons = 0;
    XQueryPointer(display, DefaultRootWindow(display), &root, &child, &x, &y, &unused, &unused, &buttons);
    if (child != frame) return false;
    const int top = positionOf(display, frame)[1], bottom = positionOf(display, view)[1];
    // Above the view are the title bar and, lower, the menu bar.
    return y < top + (bottom - top) / 2;
}

} // namespace

bool personClosesWindow(unsigned long view) {
    auto* gdk = gdk_display_get_default();
    auto* display = gdk_x11_get_default_xdisplay();
    XkbStateRec keyboard{};
    XkbGetState(display, XkbUseCoreKbd, &keyboard);
    if ((keyboard.mods & ControlMask) != 0) return false;
    if ((keyboard.mods & (Mod1Mask | Mod4Mask)) != 0) return true;
    gdk_x11_display_error_trap_push(gdk);
    const bool onTitleBar = pointerIsOnTitleBar(display, view);
    return gdk_x11_display_error_trap_pop(gdk) == 0 && onTitleBar;
}

} // namespace quillmark
