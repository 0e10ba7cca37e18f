#pragma once

#include "platform/event.h"
#include "platform/linux/x11/keyboard/keymap.h"

#include <X11/X.h>

#include <vector>

namespace platform::x11 {

// Keys that go down in this order and come up in the opposite one.
using Keystroke = std::vector<KeyCode>;

// What has to be typed for a key with flags, one keystroke after the other. Empty when the keyboard lacks a
// key.
std::vector<Keystroke> keystrokesFor(const KeyboardEvent& event, const Keymap& map, bool latin);

} // namespace platform::x11
