#include "testing/desktop/key_grab.h"

#include <X11/Xlib.h>

#include <stdexcept>

namespace testbed {

KeyGrab::KeyGrab(const char* key, unsigned modifiers) : display_(XOpenDisplay(nullptr)) {
    static bool refused;
    refused = false;
    const auto former = XSetErrorHandler([](Display*, XErrorEvent*) {
        refused = true;
        return 0;
    });
    XGrabKey(display_, XKeysymToKeycode(display_, XStringToKeysym(key)), modifiers,
             DefaultRootWindow(display_), False, GrabModeAsync, GrabModeAsync);
    XSync(display_, False);
    XSetErrorHandler(former);
    if (!refused) return;
    XCloseDisplay(display_);
    throw std::runtime_error("A program has the key already.");
}

KeyGrab::~KeyGrab() { XCloseDisplay(display_); }

} // namespace testbed
