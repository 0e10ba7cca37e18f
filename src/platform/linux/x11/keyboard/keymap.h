#pragma once

#include <X11/XKBlib.h>

#include <memory>
#include <optional>
#include <span>

// What the keys of one keyboard mean, as it was when read. A plain value; copies share the data.
namespace platform::x11 {

class Keymap {
public:
    // Asks the server for a keyboard's map (one round trip). Absent when there is none.
    static std::optional<Keymap> read(unsigned keyboard);

    // The user's layout that types Latin letters, the current one if it does; absent when none does. The
    // server calls a layout a group.
    std::optional<unsigned> latinGroup(unsigned current) const;

    // What a key types in a group while `modifiers` are held; NoSymbol for nothing.
    KeySym symbol(KeyCode key, unsigned group, unsigned modifiers = 0) const;

    // The modifier bits that a key sets while it is held.
    unsigned modifiersOf(KeyCode key) const;

    // The modifier bits that the keys of any of these names set; 0 when the keyboard has no such key.
    unsigned modifierMask(std::span<const KeySym> names) const;

    // The modifier key of the first of these names that the keyboard has.
    std::optional<KeyCode> modifierKey(std::span<const KeySym> names) const;

    // The bits of Caps Lock and Num Lock, which do not count as held.
    unsigned lockMask() const;

    KeyCode firstKey() const { return map_->min_key_code; }
    KeyCode lastKey() const { return map_->max_key_code; }

private:
    explicit Keymap(std::shared_ptr<XkbDescRec> map);
    bool isNamed(KeyCode key, KeySym name) const;
    bool typesLatin(unsigned group) const;

    std::shared_ptr<XkbDescRec> map_;
    unsigned groups_ = 0;
};

} // namespace platform::x11
