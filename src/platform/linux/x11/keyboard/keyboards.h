#pragma once

#include <vector>

// The keyboards of the X server, by device number. Main thread only.
namespace platform::x11 {

// The core keyboard, whose state all programs see: the sum of all keyboards.
inline constexpr unsigned coreKeyboard = 0x0100; // XkbUseCoreKbd

// The keyboard that synthetic keystrokes come from; the core keyboard when the server does not name one.
unsigned syntheticKeyboard();

// The keyboards that people have under their fingers.
std::vector<unsigned> realKeyboards();

} // namespace platform::x11
