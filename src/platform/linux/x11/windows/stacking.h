#pragma once

#include "platform/linux/x11/windows/properties.h"

#include <vector>

// The programs' windows as the window manager lists them. Main thread only.
namespace platform::x11 {

// From the lowest to the topmost.
std::vector<WindowId> stackedWindows();

// The process's topmost window; 0 when it has none.
WindowId topmostWindow(pid_t process);

} // namespace platform::x11
