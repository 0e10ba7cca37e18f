#include "platform/linux/typing/delivery.h"

#include "platform/linux/x11/keyboard/typing.h"
#include "platform/linux/x11/pasteboard/primary.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/linux/x11/windows/terminals.h"
#include "platform/linux/x11/windows/window_class.h"

#include <algorithm>

namespace platform::typing {
namespace {

bool isTerminal(const std::optional<std::string>& role) {
    return role == "terminal" || x11::takesNoCopyKeys(x11::programWindow(x11::focusedWindow()));
}

} // namespace

void deliver(std::span<const KeyboardEvent> keystrokes, const std::optional<std::string>& role) {
    const bool hasCommand = std::ranges::any_of(keystrokes, [](const KeyboardEvent& keystroke) {
        return (keystroke.flags & kCGEventFlagMaskCommand) != 0;
    });
    if (!hasCommand || !isTerminal(role)) return x11::type(keystrokes);
    if (std::ranges::any_of(keystrokes, x11::isCopyKeystroke))
        selection::copyPrimarySelection(static_cast<std::uint32_t>(x11::programWindow(x11::focusedWindow())));
}

} // namespace platform::typing
