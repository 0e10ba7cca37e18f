#include "spelling/languages.h"

#include "spelling/dictionary_corrector.h"
#include "spelling/english_corrector.h"

#include <algorithm>
#include <utility>

namespace quillmark {
namespace {

std::unique_ptr<WordCorrector> correctorFor(const std::string& code) {
    if (code == "en") return std::make_unique<EnglishCorrector>();
    auto dictionary = Dictionary::open(code);
    return dictionary ? std::make_unique<DictionaryCorrector>(std::move(dictionary)) : nullptr;
}

// A long word is seldom like one of another language by chance.
bool isClearSlip(std::string_view word, WordCorrector& corrector) {
    constexpr std::size_t longWord = 7; // letters
    return word.size() >= longWord && corrector.correct(word, false) != word;
}

} // namespace

Languages::Languages(std::vector<std::string> codes) : first_(codes.empty() ? std::string() : codes.front()) {
    if (std::ranges::find(codes, "en") == codes.end()) codes.push_back("en");
    for (auto& code : codes)
        if (auto corrector = correctorFor(code))
            languages_.push_back({std::move(code), std::move(corrector)});
}

// A dictionary finds something to correct in every word of another language.
TextLanguage Languages::of(std::span<const TextPiece> text) {
    constexpr std::ptrdiff_t few = 6; // words
    const auto words = std::ranges::count_if(text, &TextPiece::isOrdinary);
    const LanguageCorrector* best = nullptr;
    std::ptrdiff_t known = -1;
    for (const auto& language : languages_) {
        auto& corrector = *language.corrector;
        const auto speaks = [&](const TextPiece& piece) {
            return piece.isOrdinary &&
                   (corrector.knows(piece.word) || (words < few && isClearSlip(piece.word, corrector)));
        };
        const auto count = std::ranges::count_if(text, speaks);
        if (count <= known) continue;
        best = &language;
        known = count;
    }
    if (!best) return {};
    const bool isEnglish = best->code == "en", isKnown = 2 * known >= words;
    const bool isUsual = best->code == first_, isNearlyAllKnown = known >= 3 && known + 1 >= words;
    // One word says nothing of its language: it may be the wrong one.
    const bool isCertain = words >= few ? isKnown : isUsual ? isKnown || words == 1 : isNearlyAllKnown;
    if (isCertain) return {best->corrector.get(), isEnglish, true};
    const bool mayBeEnglish = isEnglish && words < few && (isKnown || words == 1);
    return mayBeEnglish ? TextLanguage{best->corrector.get(), true, false} : TextLanguage{};
}

} // namespace quillmark
