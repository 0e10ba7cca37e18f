#pragma once

#include "platform/keyboard_layout.h"

#include <map>
#include <set>
#include <string>

namespace simulated {

// What each key types without modifiers; a key that is not in `keys` types nothing.
struct KeyboardLayout {
    std::map<platform::CGKeyCode, std::u16string> keys;
    // Keys that type nothing themselves and change what the next key types.
    std::set<platform::CGKeyCode> deadKeys = {};
    // Keys whose translation fails.
    std::set<platform::CGKeyCode> brokenKeys = {};
    bool typesASCII = true;
    // False: asking for the layout's data fails.
    bool hasData = true;

    static KeyboardLayout us();
    // French: A and Q have changed places, and so have Z and W.
    static KeyboardLayout azerty();
    // C is where the US layout has I, V where it has the full stop, A where it has A.
    static KeyboardLayout dvorak();
    // US, but the key of C is a dead key.
    static KeyboardLayout usWithDeadC();
    // US, but the key of C types "ç".
    static KeyboardLayout withoutC();
    // Russian: no Latin letters.
    static KeyboardLayout cyrillic();
};

} // namespace simulated
