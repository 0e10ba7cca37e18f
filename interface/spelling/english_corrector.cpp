#include "spelling/english_corrector.h"

#include "spelling/ascii.h"
#include "spelling/english_words.h"
#include "spelling/slips.h"

#include <algorithm>
#include <cstddef>

namespace quillmark {
namespace {

constexpr std::string_view typographicApostrophe = "\u2019";

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (std::size_t at; (at = text.find(from)) != std::string_view::npos;
         text.remove_prefix(at + from.size())) {
        result += text.substr(0, at);
        result += to;
    }
    result += text;
    return result;
}

} // namespace

bool EnglishCorrector::knows(std::string_view word) {
    const auto plain = replaced(word, typographicApostrophe, "'");
    const auto small = lowered(plain);
    // Rare English words are often common ones of another language: "le", "pas".
    const bool isContraction = small.find('\'') != std::string::npos && vocabulary_.contains(small);
    return vocabulary_.isCommon(small) || isContraction || !usualCorrection(small).empty();
}

std::string EnglishCorrector::correct(std::string_view word, bool certain) {
    const auto plain = replaced(word, typographicApostrophe, "'");
    auto& found = found_[certain ? 1 : 0];
    constexpr std::size_t mostRemembered = 20'000;
    if (found.size() >= mostRemembered) found.clear();
    const auto [entry, isNew] = found.try_emplace(plain);
    if (isNew) entry->second = find(plain, certain);
    const auto& corrected = entry->second;
    if (corrected == plain) return std::string(word);
    return plain.size() == word.size() ? corrected : replaced(corrected, "'", typographicApostrophe);
}

// A name in small letters is no mistake for certain: "ubuntu".
bool EnglishCorrector::isRight(const std::string& word) const {
    auto changed = lowered(word);
    if (vocabulary_.contains(word) || vocabulary_.contains(changed)) return true;
    changed.front() = upper(changed.front());
    return vocabulary_.contains(changed);
}

std::string EnglishCorrector::find(const std::string& word, bool certain) const {
    const auto small = lowered(word);
    const bool isCapitalised = isUpper(word.front());
    const auto asTyped = [&](std::string text) {
        if (isCapitalised) text.front() = upper(text.front());
        return text;
    };
    if (const auto usual = usualMeaning(word, small); !usual.empty()) return asTyped(usual);
    if (isLeftAlone(word, small)) return word;

    // A slip that costs no more leaves no doubt of what was meant.
    constexpr double sure = 0.7, sureEnough = 0.9;
    constexpr std::size_t longWord = 8, shortWord = 4; // letters
    const auto meant = vocabulary_.meant(small);
    if (!meant || (isMadeOfWords(small) && meant->cost > sureEnough)) return word;
    // A capitalised word that is no English one is mostly a name.
    const bool isDoubtful = meant->cost > sure || (!meant->isEveryday && word.size() < longWord);
    if (isDoubtful && (isCapitalised || !certain)) return word;
    if (isCapitalised && word.size() <= shortWord) return word;
    const auto name = usualCorrection(meant->word); // "Monday"
    return asTyped(name.empty() ? meant->word : name);
}

// Empty when the word is no usual slip.
std::string EnglishCorrector::usualMeaning(const std::string& word, const std::string& small) const {
    if (word == "Ive") return {}; // a name too
    const auto apostrophe = small.find('\'');
    if (apostrophe == std::string::npos) return usualCorrection(small);
    // "did'nt"
    if (isRight(word)) return {};
    const auto usual = usualCorrection(std::string(small).erase(apostrophe, 1));
    return usual.find('\'') != std::string::npos ? usual : std::string();
}

bool EnglishCorrector::isLeftAlone(const std::string& word, const std::string& small) const {
    const auto stem = [&](std::size_t letters) { return small.substr(0, small.size() - letters); };
    // "the Smiths'", "Okafor's", "naïve"
    if (word.size() > Slips::mostLetters || !std::ranges::all_of(small, isLower)) return true;
    if (isShorthand(small) || isJargon(small) || isRight(word)) return true;
    // What people make of words that they know: "templated", "proxied".
    return (small.ends_with("ied") && vocabulary_.contains(stem(3) + 'y')) ||
           (small.ends_with("ed") && vocabulary_.contains(stem(1)));
}

// "toolkit", "unshifted", "globals": a dictionary cannot hold all that people make of its words.
bool EnglishCorrector::isMadeOfWords(const std::string& word) const {
    constexpr std::size_t fewestOfPart = 3, fewestOfStem = 5; // letters
    if (word.size() > fewestOfStem && word.ends_with('s') &&
        vocabulary_.contains(word.substr(0, word.size() - 1)))
        return true;
    for (const std::string_view prefix : {"un", "re", "de"})
        if (word.starts_with(prefix) && word.size() >= prefix.size() + fewestOfStem &&
            vocabulary_.contains(word.substr(prefix.size())))
            return true;
    for (std::size_t at = fewestOfPart; at + fewestOfPart <= word.size(); ++at)
        if (vocabulary_.isCommon(word.substr(0, at)) && vocabulary_.isCommon(word.substr(at))) return true;
    return false;
}

} // namespace quillmark
