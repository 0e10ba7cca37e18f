#include "platform/linux/x11/keyboard/keymap.h"

#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/keysym.h>

#include <algorithm>
#include <utility>

namespace platform::x11 {

std::optional<Keymap> Keymap::read(unsigned keyboard) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return std::nullopt;
    XkbDescPtr map =
        XkbGetMap(connection->display(), XkbKeyTypesMask | XkbKeySymsMask | XkbModifierMapMask, keyboard);
    if (map == nullptr) return std::nullopt;
    std::shared_ptr<XkbDescRec> owned(map, [](XkbDescPtr unused) { XkbFreeKeyboard(unused, 0, True); });
    if (map->map == nullptr || map->map->types == nullptr || map->map->key_sym_map == nullptr)
        return std::nullopt;
    return Keymap(std::move(owned));
}

Keymap::Keymap(std::shared_ptr<XkbDescRec> map) : map_(std::move(map)) {
    for (unsigned key = firstKey(); key <= lastKey(); ++key)
        groups_ = std::max(groups_, static_cast<unsigned>(XkbKeyNumGroups(map_, key)));
}

std::optional<unsigned> Keymap::latinGroup(unsigned current) const {
    if (typesLatin(current)) return current;
    for (unsigned group = 0; group < groups_; ++group)
        if (typesLatin(group)) return group;
    return std::nullopt;
}

// Most of the letters will do: some Latin layouts lack a few, the others lack them all.
bool Keymap::typesLatin(unsigned group) const {
    int letters = 0;
    for (unsigned key = firstKey(); key <= lastKey(); ++key) {
        const KeySym name = symbol(static_cast<KeyCode>(key), group);
        if (name >= XK_a && name <= XK_z) ++letters;
    }
    return letters > 13;
}

KeySym Keymap::symbol(KeyCode key, unsigned group, unsigned modifiers) const {
    KeySym symbol = NoSymbol;
    unsigned used = 0;
    if (key < firstKey() || key > lastKey() ||
        XkbTranslateKeyCode(map_.get(), key, XkbBuildCoreState(modifiers, group), &used, &symbol) == False)
        return NoSymbol;
    return symbol;
}

unsigned Keymap::modifiersOf(KeyCode key) const {
    if (map_->map->modmap == nullptr || key < firstKey() || key > lastKey()) return 0;
    return map_->map->modmap[key];
}

bool Keymap::isNamed(KeyCode key, KeySym name) const {
    for (unsigned group = 0; group < groups_; ++group)
        if (symbol(key, group) == name) return true;
    return false;
}

unsigned Keymap::modifierMask(std::span<const KeySym> names) const {
    unsigned mask = 0;
    for (unsigned key = firstKey(); key <= lastKey(); ++key) {
        const auto code = static_cast<KeyCode>(key);
        if (const unsigned modifiers = modifiersOf(code); modifiers != 0)
            for (const KeySym name : names)
                if (isNamed(code, name)) mask |= modifiers;
    }
    return mask;
}

std::optional<KeyCode> Keymap::modifierKey(std::span<const KeySym> names) const {
    for (const KeySym name : names)
        for (unsigned key = firstKey(); key <= lastKey(); ++key) {
            const auto code = static_cast<KeyCode>(key);
            if (modifiersOf(code) != 0 && isNamed(code, name)) return code;
        }
    return std::nullopt;
}

unsigned Keymap::lockMask() const {
    constexpr KeySym numLock[]{XK_Num_Lock};
    return LockMask | modifierMask(numLock);
}

} // namespace platform::x11
