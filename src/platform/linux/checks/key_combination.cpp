#include "platform/linux/checks/key_combination.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace platform {
namespace {

// Openbox writes single letters; i3 the X server's names.
constexpr std::array<std::pair<std::string_view, std::string_view>, 15> modifierNames{{
    {"alt", "alt"},
    {"a", "alt"},
    {"mod1", "alt"},
    {"shift", "shift"},
    {"s", "shift"},
    {"control", "control"},
    {"ctrl", "control"},
    {"primary", "control"},
    {"c", "control"},
    {"super", "super"},
    {"meta", "super"},
    {"win", "super"},
    {"w", "super"},
    {"mod4", "super"},
    {"super_l", "super"},
}};

bool belongsToWord(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '_';
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words(1);
    for (char letter : text) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
        if (belongsToWord(letter))
            words.back() += letter;
        else if (!words.back().empty())
            words.emplace_back();
    }
    // "&lt;Alt&gt;" in a file of XML.
    std::erase_if(words,
                  [](const std::string& word) { return word.empty() || word == "lt" || word == "gt"; });
    return words;
}

} // namespace

KeyCombination readKeyCombination(std::string_view text) {
    auto words = wordsOf(text);
    if (words.empty()) return {};
    KeyCombination keys{{}, std::move(words.back())};
    words.pop_back();
    for (const auto& word : words) {
        const auto known = std::ranges::find(modifierNames, word, [](const auto& one) { return one.first; });
        if (known == modifierNames.end()) return {};
        keys.modifiers.emplace(known->second);
    }
    return keys;
}

} // namespace platform
