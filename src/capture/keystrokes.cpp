#include "capture/ax.h"
#include "platform/keyboard_layout.h"
#include "text/text.h"
#include "text/utf16.h"

namespace AX {

namespace {

constexpr platform::CGKeyCode lastKeyCode = 127;
constexpr std::size_t translationLimit = 4; // UTF-16 units

// What a key types without modifiers; empty for a dead key and for a key that types nothing.
std::string typedBy(const platform::UnicodeKeyLayout& layout, platform::CGKeyCode key) {
    std::uint32_t deadKeyState = 0;
    const auto units = platform::UCKeyTranslate(layout, key, platform::KeyAction::kUCKeyActionDown, 0,
                                                platform::LMGetKbdType(), 0, deadKeyState, translationLimit);
    return units ? text::fromUtf16(*units) : std::string{};
}

} // namespace

std::optional<platform::CGKeyCode> keyCode(std::string_view character) {
    const auto source = platform::TISCopyCurrentASCIICapableKeyboardLayoutInputSource();
    if (!source) return std::nullopt;
    const auto layout = platform::TISGetInputSourceProperty(
        source, platform::InputSourceProperty::kTISPropertyUnicodeKeyLayoutData);
    if (!layout) return std::nullopt;

    for (platform::CGKeyCode key = 0; key <= lastKeyCode; ++key) {
        if (text::equalStrings(text::firstCharacter(typedBy(*layout, key)), character)) return key;
    }
    return std::nullopt;
}

void postKey(std::string_view character, platform::CGKeyCode fallbackKeyCode, platform::CGEventFlags flags) {
    const auto key = keyCode(character).value_or(fallbackKeyCode);
    const auto source = platform::CGEventSourceCreate(platform::CGEventSourceStateID::combinedSessionState);
    auto down = platform::CGEventCreateKeyboardEvent(source, key, true);
    if (!down) return;
    auto up = platform::CGEventCreateKeyboardEvent(source, key, false);
    if (!up) return;
    platform::CGEventSetFlags(*down, flags);
    platform::CGEventSetFlags(*up, flags);
    platform::CGEventPost(platform::CGEventTapLocation::kCGHIDEventTap, *down);
    platform::CGEventPost(platform::CGEventTapLocation::kCGHIDEventTap, *up);
}

} // namespace AX
