#pragma once

#include "platform/linux/x11/windows/front_window.h"

namespace platform::x11 {

// Asks the window manager to go to the window's workspace, bring the window to the front and give it the
// keyboard focus. False when the request failed. Main thread only.
bool activateWindow(WindowId window);

// True for a short time while another window of that program is still to come to the front. When the host's
// window goes, window managers first give the focus to the window that had it before, and then obey the host.
// Main thread only.
bool isOnlyPassing(const FrontWindow& front);

} // namespace platform::x11
