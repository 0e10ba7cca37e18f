// Looks a character up on the keyboard layout in use.
#pragma once

#include "platform/keyboard_layout.h"

#include <cstdint>
#include <optional>
#include <string>

// The first key that types the character without modifiers; absent when none does.
inline std::optional<platform::CGKeyCode> keyThatTypes(char16_t character) {
    using namespace platform;
    const auto source = TISCopyCurrentASCIICapableKeyboardLayoutInputSource();
    const auto layout =
        TISGetInputSourceProperty(source, InputSourceProperty::kTISPropertyUnicodeKeyLayoutData);
    if (!layout) return std::nullopt;
    for (CGKeyCode key = 0; key < 128; ++key) {
        std::uint32_t deadKeyState = 0;
        const auto typed =
            UCKeyTranslate(*layout, key, KeyAction::kUCKeyActionDown, 0, LMGetKbdType(), 0, deadKeyState, 4);
        if (typed == std::u16string(1, character)) return key;
    }
    return std::nullopt;
}
