#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// The keyboard layout: which character a key types. Main thread only.
namespace platform {

// The number of a physical key: a position on the keyboard, the same whatever the layout types there (8 is
// the position of C on a US keyboard, 49 is Space). The numbers are the desktop-independent ones the host's
// interface uses for its hot key.
using CGKeyCode = std::uint16_t;

// A keyboard layout's data, passed unread from the layout to the translation; each desktop completes it.
class UnicodeKeyLayout;
using UnicodeKeyLayoutRef = std::shared_ptr<const UnicodeKeyLayout>;

// A keyboard layout as the user has chosen it; each desktop completes it.
class InputSource;
using TISInputSourceRef = std::shared_ptr<const InputSource>;

// The layout in use if it types ASCII letters, else the first of the user's other layouts that does. Null
// when none does.
TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource();

enum class InputSourceProperty { kTISPropertyUnicodeKeyLayoutData };

// The data of a layout, or null. `source` must not be null.
UnicodeKeyLayoutRef TISGetInputSourceProperty(const TISInputSourceRef& source, InputSourceProperty property);

// The physical keyboard's type, for the translation.
std::uint8_t LMGetKbdType();

enum class KeyAction : std::uint16_t { kUCKeyActionDown = 0 };

// What pressing a key types: at most `maximumLength` UTF-16 units, none for a key that types nothing or a
// dead key (whose state is then left in `deadKeyState`). Absent when the translation fails.
std::optional<std::u16string> UCKeyTranslate(const UnicodeKeyLayout& layout, CGKeyCode keyCode,
                                             KeyAction action, std::uint32_t modifierState,
                                             std::uint8_t keyboardType, std::uint32_t options,
                                             std::uint32_t& deadKeyState, std::size_t maximumLength);

} // namespace platform
