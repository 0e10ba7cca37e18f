#pragma once

#include "platform/keyboard_layout.h"

#include <optional>

// The one table between the host's key codes and the keyboard's positions.
namespace platform::x11 {

// The X key code of a key position; absent for a number without a key. It is the kernel's number of the key
// plus eight, as in the "evdev" key codes of every X server on Linux.
std::optional<unsigned char> xKeyCode(CGKeyCode keyCode);

// Positions that the host falls back to when no layout types the letter.
inline constexpr CGKeyCode positionOfA = 0;
inline constexpr CGKeyCode positionOfC = 8;
inline constexpr CGKeyCode positionOfV = 9;

} // namespace platform::x11
