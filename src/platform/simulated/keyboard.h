#pragma once

#include "platform/keyboard_layout.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace simulated {

// What each key types without modifiers. A key that is not listed types nothing.
struct KeyboardLayout {
    std::map<platform::CGKeyCode, std::u16string> keys;
    // Keys that wait for the next one.
    std::set<platform::CGKeyCode> deadKeys = {};
    // Keys whose translation fails.
    std::set<platform::CGKeyCode> brokenKeys = {};
    bool typesASCII = true;
    // A layout can come without the data that says what its keys type.
    bool hasData = true;

    static KeyboardLayout us();
    // A and Q, Z and W change places.
    static KeyboardLayout azerty();
    // C is on the key of I, V on that of the full stop; A stays.
    static KeyboardLayout dvorak();
    // US, with C on a dead key and on none other.
    static KeyboardLayout usWithDeadC();
    // US, with "ç" where C is.
    static KeyboardLayout withoutC();
    // No Latin letter at all.
    static KeyboardLayout cyrillic();
};

} // namespace simulated
