#include "platform/linux/interface/value_words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <type_traits>
#include <variant>

namespace platform {
namespace {

using flutter::EncodableList;
using flutter::EncodableMap;
using flutter::EncodableValue;

constexpr std::size_t mostElements = 20;
constexpr std::size_t mostTextBytes = 2000;

// What the host reports about programs and generations, and its replies to "paste".
constexpr std::array<std::string_view, 8> shownKeys = {"source", "app_id",        "app_name", "request_id",
                                                       "kind",   "finish_reason", "state",    "os_build"};
constexpr std::array<std::string_view, 2> shownStrings = {"pasted", "copied-only"};

bool isIn(const auto& names, std::string_view name) { return std::ranges::find(names, name) != names.end(); }

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char character : text.substr(0, mostTextBytes)) {
        if (character == '\n')
            result += "\\n";
        else if (static_cast<unsigned char>(character) < 0x20)
            result += ' ';
        else
            result += character;
    }
    return result + (text.size() > mostTextBytes ? "…\"" : "\"");
}

std::string wordsOf(const std::string& text, bool texts) {
    if (texts || isIn(shownStrings, text)) return inQuotes(text);
    return "string of " + std::to_string(text.size()) + " bytes";
}

std::string wordsOf(const EncodableList& list, bool texts) {
    std::string result = "[";
    for (std::size_t index = 0; index < std::min(list.size(), mostElements); ++index)
        result += (index > 0 ? ", " : "") + words(list[index], texts);
    if (list.size() > mostElements) result += ", … " + std::to_string(list.size()) + " in all";
    return result + "]";
}

std::string wordsOf(const EncodableMap& map, bool texts) {
    std::string result = "{";
    std::size_t shown = 0;
    for (const auto& [key, value] : map) {
        if (shown == mostElements) break;
        const auto* name = key.getIf<std::string>();
        result += (shown++ > 0 ? ", " : "") + words(key, true) + ": ";
        result += words(value, texts || (name != nullptr && isIn(shownKeys, *name)));
    }
    if (map.size() > mostElements) result += ", … " + std::to_string(map.size()) + " in all";
    return result + "}";
}

std::string wordsOf(std::monostate, bool) { return "null"; }

std::string wordsOf(bool value, bool) { return value ? "true" : "false"; }

template <class Number>
requires std::is_arithmetic_v<Number> std::string wordsOf(Number number, bool) {
    return std::to_string(number);
}

template <class Number>
std::string wordsOf(const std::vector<Number>& numbers, bool) {
    return "list of " + std::to_string(numbers.size()) + " numbers";
}

} // namespace

std::string words(const EncodableValue& value, bool texts) {
    return std::visit([texts](const auto& content) { return wordsOf(content, texts); }, value.storage());
}

} // namespace platform
