#include "platform/event.h"

#include "platform/linux/typing/delivery.h"
#include "platform/linux/typing/watch.h"
#include "platform/linux/x11/keyboard/held_modifiers.h"
#include "platform/linux/x11/keyboard/key_positions.h"
#include "platform/linux/x11/keyboard/keystroke_batch.h"

#include <utility>

namespace platform {

std::optional<EventSource> CGEventSourceCreate(CGEventSourceStateID state) {
    if (!x11::canType()) return std::nullopt;
    return EventSource{state};
}

std::optional<KeyboardEvent> CGEventCreateKeyboardEvent(const std::optional<EventSource>&, CGKeyCode keyCode,
                                                        bool keyDown) {
    if (!x11::canType() || !x11::xKeyCode(keyCode)) return std::nullopt;
    return KeyboardEvent{keyCode, keyDown, 0};
}

void CGEventSetFlags(KeyboardEvent& event, CGEventFlags flags) { event.flags = flags; }

void CGEventPost(CGEventTapLocation, const KeyboardEvent& event) {
    static std::optional<KeyboardEvent> down;
    if (event.keyDown) {
        down = event;
        return;
    }
    const auto keystroke = std::exchange(down, std::nullopt);
    if (!keystroke || keystroke->keyCode != event.keyCode) return;
    if (auto* watch = KeystrokeGuard::Watch::current()) {
        watch->keystrokes.push_back(*keystroke);
        return;
    }
    typing::Delivery({&*keystroke, 1}, std::nullopt).deliver([] { return true; });
    x11::awaitTyped();
}

CGEventFlags Event::modifierFlags() { return x11::heldModifiers(); }

} // namespace platform
