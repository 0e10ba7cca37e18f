#include "platform/keyboard_layout.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/key_positions.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/keymap.h"

#include <xkbcommon/xkbcommon.h>

#include <optional>
#include <utility>

namespace platform {

// One group of the keyboard that synthetic keystrokes come from: its map may differ from the real
// keyboards'.
class UnicodeKeyLayout {
public:
    UnicodeKeyLayout(x11::Keymap map, unsigned group) : map_(std::move(map)), group_(group) {}

    // The character a key types; 0 for none, dead keys included.
    char32_t character(KeyCode key, unsigned modifiers) const {
        return xkb_keysym_to_utf32(static_cast<xkb_keysym_t>(map_.symbol(key, group_, modifiers)));
    }

private:
    x11::Keymap map_;
    unsigned group_;
};

class InputSource {
public:
    explicit InputSource(UnicodeKeyLayoutRef layout) : layout_(std::move(layout)) {}
    const UnicodeKeyLayoutRef& layout() const { return layout_; }

private:
    UnicodeKeyLayoutRef layout_;
};

namespace {

// Bits of a translation's modifier state.
constexpr std::uint32_t shiftState = 0x02;
constexpr std::uint32_t capsLockState = 0x04;

unsigned currentGroup() {
    x11::XlibConnection* connection = x11::XlibConnection::shared();
    XkbStateRec state{};
    if (connection == nullptr || XkbGetState(connection->display(), XkbUseCoreKbd, &state) != Success)
        return 0;
    return state.group;
}

std::u16string utf16(char32_t character) {
    if (character < 0x10000) return {static_cast<char16_t>(character)};
    character -= 0x10000;
    return {static_cast<char16_t>(0xD800 + (character >> 10)),
            static_cast<char16_t>(0xDC00 + (character & 0x3FF))};
}

} // namespace

TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource() {
    const auto map = x11::Keymap::read(x11::syntheticKeyboard());
    if (!map) return nullptr;
    const auto group = map->latinGroup(currentGroup());
    if (!group) return nullptr;
    return std::make_shared<const InputSource>(std::make_shared<const UnicodeKeyLayout>(*map, *group));
}

UnicodeKeyLayoutRef TISGetInputSourceProperty(const TISInputSourceRef& source, InputSourceProperty) {
    return source ? source->layout() : nullptr;
}

std::uint8_t LMGetKbdType() { return 0; } // the map already belongs to one keyboard

std::optional<std::u16string> UCKeyTranslate(const UnicodeKeyLayout& layout, CGKeyCode keyCode, KeyAction,
                                             std::uint32_t modifierState, std::uint8_t, std::uint32_t,
                                             std::uint32_t& deadKeyState, std::size_t maximumLength) {
    const auto key = x11::xKeyCode(keyCode);
    if (!key) return std::nullopt;
    deadKeyState = 0;
    const unsigned modifiers = ((modifierState & shiftState) != 0 ? ShiftMask : 0U) |
                               ((modifierState & capsLockState) != 0 ? LockMask : 0U);
    const char32_t character = layout.character(*key, modifiers);
    if (character == 0) return std::u16string();
    std::u16string units = utf16(character);
    if (units.size() > maximumLength) return std::nullopt;
    return units;
}

} // namespace platform
