#include "spelling/dictionary_corrector.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace quillmark {
namespace {

using Letters = std::vector<std::string>; // of a word, in UTF-8 each

Letters lettersOf(const icu::UnicodeString& word) {
    Letters letters;
    for (std::int32_t at = 0; at < word.length(); at = word.moveIndex32(at, 1))
        icu::UnicodeString(word.char32At(at)).toUTF8String(letters.emplace_back());
    return letters;
}

std::string joined(const Letters& letters) {
    std::string word;
    for (const auto& letter : letters)
        word += letter;
    return word;
}

std::string lowered(const std::string& word) {
    std::string result;
    icu::UnicodeString::fromUTF8(word).toLower(icu::Locale::getRoot()).toUTF8String(result);
    return result;
}

std::string capitalised(const std::string& word) {
    auto text = icu::UnicodeString::fromUTF8(word);
    if (text.isEmpty()) return word;
    const auto first = text.char32At(0);
    std::string result;
    text.replace(0, U16_LENGTH(first), u_toupper(first)).toUTF8String(result);
    return result;
}

bool isCapitalised(const std::string& word) {
    return !word.empty() && u_isupper(icu::UnicodeString::fromUTF8(word).char32At(0));
}

// Two letters swapped, one typed twice, or a double one typed once: the commonest slips of the fingers.
std::vector<std::string> likelyMeant(const Letters& typed) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at < typed.size(); ++at) {
        auto twice = typed;
        twice.insert(twice.begin() + static_cast<std::ptrdiff_t>(at), typed[at]);
        words.push_back(joined(twice));
        if (at + 1 == typed.size()) continue;
        auto edited = typed;
        if (typed[at] == typed[at + 1])
            edited.erase(edited.begin() + static_cast<std::ptrdiff_t>(at));
        else
            std::swap(edited[at], edited[at + 1]);
        words.push_back(joined(edited));
    }
    return words;
}

// One letter left out, put in, or taken for another.
std::vector<std::string> perhapsMeant(const Letters& typed, const std::vector<std::string>& alphabet) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at <= typed.size(); ++at) {
        const auto place = static_cast<std::ptrdiff_t>(at);
        auto edited = typed;
        auto& added = *edited.insert(edited.begin() + place, std::string());
        for (const auto& letter : alphabet) {
            added = letter;
            words.push_back(joined(edited));
        }
        if (at == typed.size()) continue;
        edited = typed;
        for (const auto& letter : alphabet) {
            edited[at] = letter;
            words.push_back(joined(edited));
        }
        edited.erase(edited.begin() + place);
        words.push_back(joined(edited));
    }
    return words;
}

} // namespace

DictionaryCorrector::DictionaryCorrector(std::unique_ptr<Dictionary> dictionary)
    : dictionary_(std::move(dictionary)) {}

bool DictionaryCorrector::knows(std::string_view word) {
    return dictionary_->knows(word) || dictionary_->knows(lowered(std::string(word)));
}

std::string DictionaryCorrector::correct(std::string_view word, bool certain) {
    if (!certain) return std::string(word);
    constexpr std::size_t mostRemembered = 20'000;
    if (found_.size() >= mostRemembered) found_.clear();
    const auto [entry, isNew] = found_.try_emplace(std::string(word));
    if (isNew) entry->second = find(entry->first);
    return entry->second;
}

std::string DictionaryCorrector::find(const std::string& word) const {
    // Shorter words that no dictionary has are mostly names and abbreviations.
    constexpr std::size_t fewestLetters = 4, fewestForAnyLetter = 6, mostLetters = 30;
    const auto small = lowered(word);
    const auto typed = lettersOf(icu::UnicodeString::fromUTF8(small));
    const bool isName = isCapitalised(word);
    if (typed.size() < fewestLetters || typed.size() > mostLetters) return word;
    // A name in small letters is no mistake for certain.
    if (dictionary_->knows(word) || dictionary_->knows(small) || dictionary_->knows(capitalised(small)))
        return word;

    const auto only = [&](const std::vector<std::string>& meant) -> std::string {
        std::set<std::string> known;
        for (const auto& each : meant) {
            const auto cased = isName ? capitalised(each) : each;
            if (dictionary_->knows(cased)) known.insert(cased);
            if (known.size() > 1) return {};
        }
        return known.empty() ? std::string() : *known.begin();
    };
    const auto likely = only(likelyMeant(typed));
    if (!likely.empty() || isName || typed.size() < fewestForAnyLetter) return likely.empty() ? word : likely;
    const auto any = only(perhapsMeant(typed, dictionary_->letters()));
    return any.empty() ? word : any;
}

} // namespace quillmark
