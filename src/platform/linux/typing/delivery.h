#pragma once

#include "platform/event.h"

#include <optional>
#include <span>
#include <string>

namespace platform::typing {

// Types the keystrokes, all together, in the window that has the keyboard focus. Command keystrokes are left
// out in a terminal: where the focused element has that role (which may be absent), or the window belongs to
// a program known as one. In place of the copy keystroke the terminal's selected text is put on the
// pasteboard.
void deliver(std::span<const KeyboardEvent> keystrokes, const std::optional<std::string>& role);

} // namespace platform::typing
