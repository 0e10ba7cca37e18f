#pragma once

#include <X11/X.h>

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
std::optional<WindowClass> windowClass(::Window window);

// ASCII letters in lower case, to compare such names.
std::string lowerCase(std::string_view name);

} // namespace platform::x11
