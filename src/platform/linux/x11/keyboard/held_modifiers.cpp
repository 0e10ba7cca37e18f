#include "platform/linux/x11/keyboard/held_modifiers.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/keymap.h"
#include "platform/linux/x11/keyboard/modifier_keys.h"

namespace platform::x11 {
namespace {

unsigned modifiersOf(Display* display, unsigned keyboard) {
    XkbStateRec state{};
    // Latched and locked ones count: for the next program that sees a key they are as good as held.
    return XkbGetState(display, keyboard, &state) == Success ? state.mods : 0;
}

} // namespace

CGEventFlags heldModifiers() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return 0;
    unsigned held = modifiersOf(connection->display(), coreKeyboard);
    for (const unsigned keyboard : realKeyboards())
        held |= modifiersOf(connection->display(), keyboard);
    if (held == 0) return 0;
    const auto map = Keymap::read(coreKeyboard);
    CGEventFlags flags = (held & LockMask) != 0 ? kCGEventFlagMaskAlphaShift : 0;
    for (const ModifierKey& key : modifierKeys())
        if (map && (held & map->modifierMask(key.held)) != 0) flags |= key.flag;
    return flags;
}

} // namespace platform::x11
