#pragma once

#include "platform/linux/x11/windows/properties.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform::x11 {

// What a window says it is (`WM_CLASS`).
struct WindowClass {
    std::string instance; // of this window
    std::string name;     // of its program
};

// Absent when the window does not say.
std::optional<WindowClass> windowClass(WindowId window);

// The window, or the nearest one around it, that says what program it is of (`WM_CLASS`); 0 for none. The
// focus is often on a nameless child of it.
WindowId programWindow(WindowId window);

// ASCII letters in lower case, to compare such names.
std::string lowerCase(std::string_view name);

} // namespace platform::x11
