#pragma once

#include <optional>
#include <vector>

// The keyboards of the X server, by device number. Main thread only.
namespace platform::x11 {

// The number of the XInput extension, 2.2 or later; absent where the server has none.
std::optional<int> xInputOpcode();

// The core keyboard, whose state all programs see: the sum of all keyboards.
inline constexpr unsigned coreKeyboard = 0x0100; // XkbUseCoreKbd

// The keyboard that synthetic keystrokes come from; the core keyboard when the server does not name one.
unsigned syntheticKeyboard();

// The keyboard that the latest key came from; the core keyboard where the server does not tell.
unsigned lastUsedKeyboard();

// The keyboards that people type on.
std::vector<unsigned> realKeyboards();

} // namespace platform::x11
