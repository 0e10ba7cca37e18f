#include "platform/linux/corrector.h"

#include "platform/linux/edit_distance.h"

#include <hunspell/hunspell.hxx>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr auto affixFile = "/usr/share/hunspell/en_US.aff";
constexpr auto wordFile = "/usr/share/hunspell/en_US.dic";
// Without it, rare words count as no rarer than others.
constexpr auto commonWordFile = "/usr/share/dict/american-english-small";

constexpr std::string_view typographicApostrophe = "\u2019";

// Beside the distance: a word that few people use, a name where none was written, and two words in one.
constexpr double uncommon = 0.5, unexpectedCapital = 0.5, expectedCapital = 0.1;
// A capitalised word that the dictionary does not know is mostly a name.
constexpr double tinyDistance = 0.65;

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isAscii(char c) { return (c & 0x80) == 0; }
char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string lowered(std::string_view word) {
    std::string result(word);
    std::ranges::transform(result, result.begin(), lower);
    return result;
}

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (std::size_t at; (at = text.find(from)) != std::string_view::npos;
         text.remove_prefix(at + from.size()))
        (result += text.substr(0, at)) += to;
    return result += text;
}

// The longer a word, the more slips still leave no doubt of what was meant.
double farthest(std::size_t length) {
    if (length <= 3) return 1.15;
    return length <= 5 ? 1.55 : 2.25;
}

// "café" for "cafe".
bool differsByAccents(std::string_view word, std::string_view suggestion) {
    std::size_t at = 0;
    bool accents = false;
    for (const char c : suggestion) {
        if ((c & 0xC0) == 0x80) continue;
        if (at == word.size() || (isAscii(c) && lower(c) != word[at])) return false;
        accents = accents || !isAscii(c);
        ++at;
    }
    return accents && at == word.size();
}

// Every text that one slip may have been made from: it suggests what hunspell leaves out.
std::vector<std::string> oneEditAway(const std::string& word) {
    static constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz'";
    std::vector<std::string> edits;
    const auto with = [&](std::size_t at, std::size_t length, std::string_view instead) {
        edits.push_back(std::string(word).replace(at, length, instead));
    };
    for (std::size_t at = 0; at <= word.size(); ++at) {
        for (std::size_t letter = 0; letter < letters.size(); ++letter) {
            with(at, 0, letters.substr(letter, 1));
            if (at < word.size()) with(at, 1, letters.substr(letter, 1));
        }
        if (at < word.size()) with(at, 1, "");
        if (at + 1 < word.size()) with(at, 2, std::string{word[at + 1], word[at]});
    }
    return edits;
}

std::unordered_set<std::string> commonWords() {
    std::unordered_set<std::string> words;
    std::ifstream file(commonWordFile);
    for (std::string word; std::getline(file, word);)
        words.insert(word);
    return words;
}

} // namespace

bool Corrector::isInstalled() { return std::ifstream(affixFile).good() && std::ifstream(wordFile).good(); }

class Corrector::Dictionary {
public:
    std::string correct(const std::string& word) {
        const auto known = corrections_.find(word);
        if (known != corrections_.end()) return known->second;
        constexpr std::size_t mostRemembered = 20'000;
        if (corrections_.size() >= mostRemembered) corrections_.clear();
        return corrections_.emplace(word, find(word)).first->second;
    }

private:
    std::string find(const std::string& word) {
        constexpr std::size_t longest = 30;
        // The dictionary takes the one for a letter's name, and finds the other close to a rarer word.
        if (word == "i") return "I";
        if (word == "alot") return "a lot";
        const auto small = lowered(word);
        if (word.size() > longest || spelling_.spell(word) || spelling_.spell(small)) return word;
        const bool capitalised = isUpper(word.front());
        auto best = closest(small, capitalised ? tinyDistance : farthest(word.size()));
        if (!best) return word;
        if (capitalised) best->front() = upper(best->front());
        return *best;
    }

    std::optional<std::string> closest(const std::string& word, double limit) {
        std::optional<std::string> best;
        const auto consider = [&](const std::string& candidate) {
            const double cost = costOf(word, candidate);
            if (cost > limit || (best && cost >= limit)) return;
            limit = cost;
            best = candidate;
        };
        for (const auto& suggestion : spelling_.suggest(word)) {
            if (differsByAccents(word, suggestion)) return std::nullopt;
            if (std::ranges::all_of(suggestion, isAscii)) consider(suggestion);
        }
        for (const auto& edit : oneEditAway(word))
            if (spelling_.spell(edit)) consider(edit);
        return best;
    }

    double costOf(const std::string& word, const std::string& candidate) const {
        const double distance = typingDistance(word, lowered(candidate));
        // "alot": two words that both are common; others are mostly no words at all.
        if (const auto blank = candidate.find(' '); blank != std::string::npos) {
            const bool common = isCommon(candidate.substr(0, blank)) && isCommon(candidate.substr(blank + 1));
            return distance + (common ? 0 : 2 * uncommon);
        }
        if (isUpper(candidate.front()))
            return distance + (distance == 0 ? expectedCapital : capitalCost(candidate));
        return distance + (isCommon(candidate) ? 0 : uncommon);
    }

    double capitalCost(const std::string& candidate) const {
        return candidate.starts_with("I'") ? expectedCapital
                                           : unexpectedCapital + (isCommon(candidate) ? 0 : uncommon);
    }

    bool isCommon(const std::string& word) const { return common_.empty() || common_.contains(word); }

    Hunspell spelling_{affixFile, wordFile};
    std::unordered_set<std::string> common_ = commonWords();
    std::unordered_map<std::string, std::string> corrections_;
};

Corrector::Corrector() : dictionary_(std::make_unique<Dictionary>()) {}
Corrector::~Corrector() = default;

std::string Corrector::correct(std::string_view word) {
    const auto plain = replaced(word, typographicApostrophe, "'");
    const auto corrected = dictionary_->correct(plain);
    if (corrected == plain) return std::string(word);
    return plain.size() == word.size() ? corrected : replaced(corrected, "'", typographicApostrophe);
}

} // namespace platform
