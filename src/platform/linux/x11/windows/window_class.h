#pragma once

#include "platform/linux/x11/windows/properties.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform::x11 {

// The two names a program gives its window (`WM_CLASS`).
struct WindowClass {
    std::string instance; // of the window or the program, such as "Navigator" or "xterm"
    std::string name;     // of the program, such as "firefox" or "XTerm"
};

// Absent when the window has none.
std::optional<WindowClass> windowClass(WindowId window);

// The window itself, or else the nearest one around it, that has a class; 0 for none. Often the focus is on a
// child window without one.
WindowId programWindow(WindowId window);

// The name with ASCII letters in lower case, to compare it with another.
std::string lowerCase(std::string_view name);

} // namespace platform::x11
