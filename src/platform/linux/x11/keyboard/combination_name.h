#pragma once

#include <X11/X.h>

#include <cstdint>
#include <string>

namespace platform::x11 {

// A hot key as the person reads it, such as "Alt+Shift+Space": by what the key types in the first layout.
std::string combinationName(KeyCode key, std::uint32_t hotKeyModifiers);

} // namespace platform::x11
