// Keys as the host finds and posts them, on the keyboard layout in use.
#pragma once

#include "platform/event.h"
#include "platform/keyboard_layout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

// What a key types without modifiers; absent when there is no such key.
inline std::optional<std::u16string> typedBy(platform::CGKeyCode key) {
    using namespace platform;
    const auto source = TISCopyCurrentASCIICapableKeyboardLayoutInputSource();
    const auto layout =
        TISGetInputSourceProperty(source, InputSourceProperty::kTISPropertyUnicodeKeyLayoutData);
    if (!layout) return std::nullopt;
    std::uint32_t deadKeyState = 0;
    return UCKeyTranslate(*layout, key, KeyAction::kUCKeyActionDown, 0, LMGetKbdType(), 0, deadKeyState, 4);
}

// The first key that types the character without modifiers; absent when none does.
inline std::optional<platform::CGKeyCode> keyThatTypes(char16_t character) {
    for (platform::CGKeyCode key = 0; key < 128; ++key)
        if (typedBy(key) == std::u16string(1, character)) return key;
    return std::nullopt;
}

// One press of a key and its release.
inline void post(platform::CGKeyCode key, platform::CGEventFlags flags) {
    using namespace platform;
    const auto source = CGEventSourceCreate(CGEventSourceStateID::combinedSessionState);
    for (const bool down : {true, false}) {
        auto event = CGEventCreateKeyboardEvent(source, key, down);
        ASSERT_TRUE(event);
        CGEventSetFlags(*event, flags);
        CGEventPost(CGEventTapLocation::kCGHIDEventTap, *event);
    }
}
