#include "platform/linux/x11/keyboard/keystroke.h"

#include "platform/linux/x11/keyboard/key_positions.h"
#include "platform/linux/x11/keyboard/modifier_keys.h"

#include <initializer_list>
#include <optional>

namespace platform::x11 {
namespace {

constexpr CGKeyCode insertKey = 0x72;
constexpr CGKeyCode homeKey = 0x73;
constexpr CGKeyCode endKey = 0x77;

std::optional<Keystroke> keystroke(const Keymap& map, CGEventFlags flags, CGKeyCode keyCode) {
    Keystroke keys;
    for (const ModifierKey& modifier : modifierKeys()) {
        if ((flags & modifier.flag) == 0) continue;
        const auto key = map.modifierKey(modifier.typed);
        if (!key) return std::nullopt;
        keys.push_back(*key);
    }
    const auto key = xKeyCode(keyCode);
    if (!key) return std::nullopt;
    keys.push_back(*key);
    return keys;
}

std::vector<Keystroke> allOf(std::initializer_list<std::optional<Keystroke>> wanted) {
    std::vector<Keystroke> all;
    for (const auto& one : wanted) {
        if (!one) return {};
        all.push_back(*one);
    }
    return all;
}

} // namespace

std::vector<Keystroke> keystrokesFor(const KeyboardEvent& event, const Keymap& map, bool latin) {
    // A keyboard with, say, a Cyrillic layout alone: no program takes its letters for copy and paste, but
    // these keys, older than Control+C and Control+V, mean the same on any layout.
    if (!latin && event.flags == kCGEventFlagMaskCommand) {
        constexpr CGEventFlags control = kCGEventFlagMaskControl;
        constexpr CGEventFlags shift = kCGEventFlagMaskShift;
        switch (event.keyCode) {
        case positionOfC:
            return allOf({keystroke(map, control, insertKey)});
        case positionOfV:
            return allOf({keystroke(map, shift, insertKey)});
        case positionOfA:
            // Also without Control: a one-line field of Qt does not know these keystrokes with it.
            return allOf({keystroke(map, control, homeKey), keystroke(map, 0, homeKey),
                          keystroke(map, control | shift, endKey), keystroke(map, shift, endKey)});
        default:
            break;
        }
    }
    return allOf({keystroke(map, event.flags, event.keyCode)});
}

} // namespace platform::x11
