#include "language/phrase.h"

namespace quillmark {

namespace {

Language inUse = Language::english;

std::string grouped(std::size_t number) {
    auto digits = std::to_string(number);
    for (auto at = digits.size(); at > 3; at -= 3)
        digits.insert(at - 3, 1, ',');
    return digits;
}

// Adds to `values` what stands for %1, %2 … in a text of that pattern; false when it has another.
bool reads(std::string_view text, std::string_view pattern, std::vector<std::string>& values) {
    const auto place = pattern.find('%');
    if (place == std::string_view::npos) return text == pattern;
    if (!text.starts_with(pattern.substr(0, place))) return false;
    text.remove_prefix(place);
    pattern.remove_prefix(place + 2);
    const auto end = pattern.empty() ? text.size() : text.find(pattern.substr(0, pattern.find('%')));
    if (end == std::string_view::npos) return false;
    values.emplace_back(text.substr(0, end));
    return reads(text.substr(end), pattern, values);
}

} // namespace

void setLanguage(Language language) { inUse = language; }
Language language() { return inUse; }

Language languageOf(std::string_view locale) {
    const bool korean = locale == "ko" || locale.starts_with("ko_") || locale.starts_with("ko.");
    return korean ? Language::korean : Language::english;
}

std::string say(const Phrase& phrase) { return inUse == Language::korean ? phrase.korean : phrase.english; }

std::string say(const Phrase& phrase, const std::vector<std::string>& values) {
    std::string said;
    const std::string pattern = say(phrase);
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const auto place = pattern[at] == '%' && at + 1 < pattern.size()
                               ? static_cast<std::size_t>(pattern[at + 1] - '1')
                               : values.size();
        if (place >= values.size()) {
            said += pattern[at];
        } else {
            said += values[place];
            ++at;
        }
    }
    return said;
}

std::string translated(const std::string& text, std::span<const Phrase> phrases) {
    if (inUse == Language::english) return text;
    for (const auto& phrase : phrases)
        if (std::vector<std::string> values; reads(text, phrase.english, values)) return say(phrase, values);
    return text;
}

std::string count(std::size_t number, const Phrase& one, const Phrase& many) {
    return say(number == 1 ? one : many, {grouped(number)});
}

} // namespace quillmark
