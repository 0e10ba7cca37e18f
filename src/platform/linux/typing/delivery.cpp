#include "platform/linux/typing/delivery.h"

#include "platform/linux/x11/base/server_grab.h"
#include "platform/linux/x11/pasteboard/primary.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/linux/x11/windows/terminals.h"
#include "platform/linux/x11/windows/window_class.h"

#include <algorithm>

namespace platform::typing {

Delivery::Delivery(std::span<const KeyboardEvent> keystrokes, const std::optional<std::string>& role) {
    const bool hasCommand = std::ranges::any_of(keystrokes, [](const KeyboardEvent& keystroke) {
        return (keystroke.flags & kCGEventFlagMaskCommand) != 0;
    });
    const auto window = x11::programWindow(x11::focusedWindow());
    if (!hasCommand || (role != "terminal" && !x11::takesNoCopyKeys(window)))
        typed_.emplace(keystrokes);
    else if (std::ranges::any_of(keystrokes, x11::isCopyKeystroke))
        copiedFrom_ = static_cast<std::uint32_t>(window);
}

bool Delivery::deliver(const std::function<bool()>& isRight) const {
    if (!typed_) {
        if (copiedFrom_ != 0 && isRight()) selection::copyPrimarySelection(copiedFrom_);
        return false;
    }
    // No other window gets the focus between the answer and the keystrokes, and what another connection asks
    // for afterwards, such as holding input, happens after them.
    const x11::ServerGrab grab;
    if (!isRight()) return false;
    typed_->type();
    return true;
}

} // namespace platform::typing
