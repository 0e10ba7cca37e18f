#pragma once

#include "platform/event.h"
#include "platform/linux/x11/keyboard/keystroke_batch.h"

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace platform::typing {

// Keystrokes on their way to the window that has the keyboard focus. Command keystrokes are left out in a
// terminal: where the focused element has that role (which may be absent), or the window belongs to a program
// known as one. In place of the copy keystroke the terminal's selected text is put on the pasteboard.
class Delivery {
public:
    // Whatever has to be asked is asked here.
    Delivery(std::span<const KeyboardEvent> keystrokes, const std::optional<std::string>& role);

    // Types them, all together, if `isRight` still says that they may be: it asks the X server only, on the
    // host's own connection. False when they were not typed.
    bool deliver(const std::function<bool()>& isRight) const;

private:
    std::optional<x11::KeystrokeBatch> typed_;
    std::uint32_t copiedFrom_ = 0; // the terminal's window
};

} // namespace platform::typing
