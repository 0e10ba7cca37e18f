#pragma once

#include "platform/linux/x11/windows/properties.h"

#include <sys/types.h>

#include <chrono>
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

// The active window, provided that its program has the keyboard focus too: a keystroke posted now arrives
// there. Absent while only one of the two has moved to another program yet, while another window of that
// program is about to come to the front, and when no program has the focus.
std::optional<FrontWindow> frontWindow();

// The same; while only one of the two has moved, waits for the other, at most that long. Launchers take the
// focus without becoming active, so it may never come.
std::optional<FrontWindow> settledFrontWindow(std::chrono::milliseconds limit);

} // namespace platform::x11
