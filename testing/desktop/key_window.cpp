#include "testing/desktop/key_window.h"

#include "testing/desktop/wait.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <stdexcept>

namespace testbed {
namespace {

::Window openWindow(::Display* display, const char* windowClass) {
    const ::Window window =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 50, 50, 300, 200, 0, 0, 0);
    setWindowClass(display, window, windowClass);
    XSelectInput(display, window, KeyPressMask | KeyReleaseMask);
    XMapWindow(display, window);
    XFlush(display);
    return window;
}

bool isViewable(::Display* display, ::Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(display, window, &attributes) != 0 && attributes.map_state == IsViewable;
}

::Window focusOf(::Display* display) {
    ::Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    return focus;
}

std::string nameOf(unsigned state, KeySym symbol) {
    std::string name;
    if ((state & ControlMask) != 0) name += "Control+";
    if ((state & ShiftMask) != 0) name += "Shift+";
    if ((state & Mod1Mask) != 0) name += "Alt+";
    if ((state & Mod4Mask) != 0) name += "Super+";
    if ((state & Mod5Mask) != 0) name += "AltGr+";
    const char* text = XKeysymToString(symbol);
    return name + (text != nullptr ? text : "?");
}

} // namespace

void setWindowClass(::Display* display, unsigned long window, std::string name) {
    XClassHint hint{name.data(), name.data()};
    XSetClassHint(display, window, &hint);
    XSync(display, False);
}

KeyWindow::KeyWindow(const char* windowClass)
    : display_(XOpenDisplay(nullptr)), window_(openWindow(display_, windowClass)) {
    if (!waitUntil([this] { return isViewable(display_, window_); }))
        throw std::runtime_error("the window never came onto the screen");
    takeFocus();
}

void KeyWindow::takeFocus() {
    const auto hasIt = [this] { // the window manager may still be busy giving it to another
        XSetInputFocus(display_, window_, RevertToParent, CurrentTime);
        return focusOf(display_) == window_;
    };
    if (!waitUntil(hasIt)) throw std::runtime_error("the window never had the focus");
}

KeyWindow::~KeyWindow() { XCloseDisplay(display_); }

const std::vector<std::string>& KeyWindow::presses() {
    read();
    return presses_;
}

int KeyWindow::loneAlts() {
    read();
    return loneAlts_;
}

void KeyWindow::read() {
    XSync(display_, False);
    while (XPending(display_) > 0) {
        XEvent event{};
        XNextEvent(display_, &event);
        if (event.type == MappingNotify) XRefreshKeyboardMapping(&event.xmapping);
        if (event.type != KeyPress && event.type != KeyRelease) continue;
        const auto key = static_cast<KeyCode>(event.xkey.keycode);
        unsigned used = 0;
        KeySym symbol = NoSymbol;
        XkbLookupKeySym(display_, key, XkbBuildCoreState(0, XkbGroupForCoreState(event.xkey.state)), &used,
                        &symbol);
        const bool isAlt = symbol == XK_Alt_L || symbol == XK_Alt_R;
        if (isAlt && event.type == KeyRelease && onlyAltSoFar_) ++loneAlts_;
        onlyAltSoFar_ = isAlt && event.type == KeyPress;
        if (IsModifierKey(symbol) || event.type == KeyRelease) continue;
        for (int other = 0; other < 4 && symbol > 0xFF && symbol < 0xFF00; ++other)
            if (const KeySym candidate = XkbKeycodeToKeysym(display_, key, other, 0);
                candidate != NoSymbol && candidate <= 0xFF)
                symbol = candidate;
        presses_.push_back(nameOf(event.xkey.state, symbol));
    }
}

} // namespace testbed
