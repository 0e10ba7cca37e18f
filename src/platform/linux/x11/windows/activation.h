#pragma once

#include "platform/linux/x11/windows/properties.h"

namespace platform::x11 {

// Asks the window manager to go to the window's workspace, bring the window to the front and give it the
// keyboard focus. False when the request failed. Main thread only.
bool activateWindow(WindowId window);

} // namespace platform::x11
