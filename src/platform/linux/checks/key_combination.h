#pragma once

#include <set>
#include <string>
#include <string_view>

namespace platform {

// A key with modifiers, as any program writes it: "Alt+Shift+Space", "<Alt><Shift>space", "A-S-space",
// "Mod1+Shift+Space". Equal when they mean the same keys. A plain value.
struct KeyCombination {
    std::set<std::string> modifiers; // of "alt", "control", "shift", "super"
    std::string key;                 // in lower case; empty when the text names none

    bool operator==(const KeyCombination&) const = default;
};

KeyCombination readKeyCombination(std::string_view text);

} // namespace platform
