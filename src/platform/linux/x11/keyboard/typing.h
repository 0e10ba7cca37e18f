#pragma once

#include "platform/event.h"

#include <span>

namespace platform::x11 {

// True when the server takes synthetic keystrokes (XTEST).
bool canType();

// Presses and releases the keys with their flags, one after the other, in the window that has the keyboard
// focus. Programs see none of the modifiers that people hold, and no key stays down. Types all of them or,
// when the keyboard lacks one, none. Main thread only.
void type(std::span<const KeyboardEvent> keys);

// True for the keystroke that copies: Control and the key that types C, or that has C on a US keyboard where
// the user has no layout with Latin letters.
bool isCopyKeystroke(const KeyboardEvent& key);

} // namespace platform::x11
