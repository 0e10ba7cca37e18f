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

} // namespace

void setLanguage(Language language) { inUse = language; }
Language language() { return inUse; }

Language languageOf(std::string_view locale) {
    const bool korean = locale == "ko" || locale.starts_with("ko_") || locale.starts_with("ko.");
    return korean ? Language::korean : Language::english;
}

std::string say(const Phrase& phrase) { return inUse == Language::korean ? phrase.korean : phrase.english; }

std::string say(const Phrase& phrase, std::initializer_list<std::string> values) {
    std::string said;
    const std::string pattern = say(phrase);
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const auto place = pattern[at] == '%' && at + 1 < pattern.size()
                               ? static_cast<std::size_t>(pattern[at + 1] - '1')
                               : values.size();
        if (place >= values.size())
            said += pattern[at];
        else
            said += values.begin()[place], ++at;
    }
    return said;
}

std::string count(std::size_t number, const Phrase& one, const Phrase& many) {
    return say(number == 1 ? one : many, {grouped(number)});
}

} // namespace quillmark
