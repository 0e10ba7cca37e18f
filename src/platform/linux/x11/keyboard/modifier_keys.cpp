#include "platform/linux/x11/keyboard/modifier_keys.h"

#include "platform/hot_key.h"

#include <X11/keysym.h>

#include <array>

namespace platform::x11 {

std::span<const ModifierKey> modifierKeys() {
    static const std::vector<KeySym> shift{XK_Shift_L, XK_Shift_R};
    static const std::vector<KeySym> control{XK_Control_L, XK_Control_R};
    static const std::vector<KeySym> alt{XK_Alt_L, XK_Alt_R, XK_Meta_L, XK_Meta_R};
    static const std::vector<KeySym> super{XK_Super_L, XK_Super_R};
    static const std::array<ModifierKey, 4> keys{{
        {kCGEventFlagMaskShift, shiftKey, shift, shift},
        {kCGEventFlagMaskControl, controlKey, control, control},
        {kCGEventFlagMaskAlternate, optionKey, alt, alt},
        // Programs here copy and paste with Control, but the Command key of the keyboard is Super.
        {kCGEventFlagMaskCommand, cmdKey, control, super},
    }};
    return keys;
}

} // namespace platform::x11
