#pragma once

#include "platform/event.h"

#include <X11/X.h>

#include <cstdint>
#include <span>
#include <vector>

// The one table of what Command, Option, Control and Shift are on this desktop.
namespace platform::x11 {

struct ModifierKey {
    CGEventFlags flag = 0;       // in synthetic keystrokes and among the held modifiers
    std::uint32_t hotKeyBit = 0; // in a hot key's mask
    std::vector<KeySym> typed;   // what a synthetic keystroke presses for it: the first that the keyboard has
    std::vector<KeySym> held;    // the keys that mean it when the user holds them, and in a hot key
};

std::span<const ModifierKey> modifierKeys();

} // namespace platform::x11
