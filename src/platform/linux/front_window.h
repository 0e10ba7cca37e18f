#pragma once

#include <X11/X.h>
#include <sys/types.h>

#include <optional>

namespace platform::x11 {

// The window that gets what the user types.
struct FrontWindow {
    ::Window window = None;
    pid_t process = 0;

    bool operator==(const FrontWindow&) const = default;
};

// The active window, provided that the keyboard focus is with its program too: then a keystroke posted now
// arrives there. Absent in between, while one of the two has moved and the other has not yet, and when no
// program has the focus.
std::optional<FrontWindow> frontWindow();

// False once another window has come to the front than the one that frontWindow() last named: a keystroke
// meant for that one would arrive elsewhere.
bool isStillInFront();

// The window, or the nearest one around it, that says what program it is of (`WM_CLASS`); 0 for none. The
// focus is often on a nameless child of it.
::Window programWindow(::Window window);

} // namespace platform::x11
