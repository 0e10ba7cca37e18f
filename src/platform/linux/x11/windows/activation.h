#pragma once

#include "platform/linux/x11/windows/properties.h"

namespace platform::x11 {

// Asks the window manager to bring a window to the front and give it the keyboard focus, on the workspace
// that it is on. False when the request failed. Main thread only.
bool activateWindow(WindowId window);

} // namespace platform::x11
