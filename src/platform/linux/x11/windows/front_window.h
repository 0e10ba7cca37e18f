#pragma once

#include "platform/linux/x11/windows/properties.h"

#include <sys/types.h>

#include <optional>

namespace platform::x11 {

// The window that gets what the user types.
struct FrontWindow {
    WindowId window = 0;
    pid_t process = 0;

    bool operator==(const FrontWindow&) const = default;
};

// The window the window manager calls active (`_NET_ACTIVE_WINDOW`), or 0.
WindowId activeWindow();

// The window that has the keyboard focus (`XGetInputFocus`), or 0.
WindowId focusedWindow();

// The active window, provided that the keyboard focus is with its program too: then a keystroke posted now
// arrives there. Absent in between, while one of the two has moved and the other has not yet, and when no
// program has the focus.
std::optional<FrontWindow> frontWindow();

// False once another window has come to the front than the one that frontWindow() last named: a keystroke
// meant for that one would arrive elsewhere.
bool isStillInFront();

} // namespace platform::x11
