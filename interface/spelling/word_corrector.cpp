#include "spelling/word_corrector.h"

#include "spelling/ascii.h"
#include "spelling/edit_distance.h"
#include "spelling/english_words.h"

#include <hunspell/hunspell.hxx>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillmark {
namespace {

constexpr auto affixFile = "/usr/share/hunspell/en_US.aff";
constexpr auto wordFile = "/usr/share/hunspell/en_US.dic";
// Without it, rare words count as no rarer than others.
constexpr auto commonWordFile = "/usr/share/dict/american-english-small";

constexpr std::string_view typographicApostrophe = "\u2019";

// Beside the distance: a word that few people use.
constexpr double uncommon = 0.5;
// Up to here nothing else can be meant; beyond, whatever lies as close makes it a guess.
constexpr double sure = 0.7, asClose = 0.2;

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (std::size_t at; (at = text.find(from)) != std::string_view::npos;
         text.remove_prefix(at + from.size()))
        (result += text.substr(0, at)) += to;
    return result += text;
}

// The longer a word, the more slips still leave no doubt of what was meant. A capitalised word that the
// dictionary does not know is mostly a name.
double farthest(std::string_view word) {
    if (word.size() <= 3 || isUpper(word.front())) return sure;
    return word.size() <= 4 ? 0.85 : word.size() <= 6 ? 1.05 : 1.55;
}

std::unordered_set<std::string> commonWords() {
    std::unordered_set<std::string> words;
    std::ifstream file(commonWordFile);
    for (std::string word; std::getline(file, word);)
        words.insert(word);
    return words;
}

} // namespace

bool WordCorrector::isInstalled() {
    return std::ifstream(affixFile).good() && std::ifstream(wordFile).good();
}

class WordCorrector::Dictionary {
public:
    bool isRight(const std::string& word) {
        const auto small = lowered(word);
        return spelling_.spell(word) || spelling_.spell(small) || isBritish(small) ||
               std::ranges::any_of(americanSpellings(small),
                                   [&](const std::string& american) { return spelling_.spell(american); });
    }

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
        const auto small = lowered(word);
        const bool capitalised = isUpper(word.front());
        const auto withCapital = [&](std::string text) {
            if (capitalised) text.front() = upper(text.front());
            return text;
        };
        // "Ive" is a name too.
        if (const auto usual = usualCorrection(small); !usual.empty() && word != "Ive")
            return withCapital(std::string(usual));
        if (word.size() > longest || isShorthand(small) || isRight(word) || isPossessive(small)) return word;
        const auto best = closest(small, isMadeOfWords(small) ? sure : farthest(word));
        return best ? withCapital(*best) : word;
    }

    bool isPossessive(const std::string& word) {
        return word.ends_with("'s") && spelling_.spell(word.substr(0, word.size() - 2));
    }

    // "toolkit", "unshifted", "globals": a dictionary cannot hold all that people make of its
    // words.
    bool isMadeOfWords(const std::string& word) {
        constexpr std::size_t shortestPart = 3, shortestStem = 5;
        if (word.size() > shortestStem && word.ends_with('s') &&
            spelling_.spell(word.substr(0, word.size() - 1)))
            return true;
        for (const std::string_view prefix : {"un", "re", "de"})
            if (word.starts_with(prefix) && word.size() >= prefix.size() + shortestStem &&
                spelling_.spell(word.substr(prefix.size())))
                return true;
        const auto isPart = [&](const std::string& part) { return isCommon(part) && spelling_.spell(part); };
        for (std::size_t at = shortestPart; at + shortestPart <= word.size(); ++at)
            if (isPart(word.substr(0, at)) && isPart(word.substr(at))) return true;
        return false;
    }

    // Absent when nothing is close enough, or several words are.
    std::optional<std::string> closest(const std::string& word, double limit) {
        std::optional<std::string> best;
        double cost = limit, second = limit + asClose;
        const auto consider = [&](const std::string& candidate) {
            const double itsCost = costOf(word, candidate);
            if (itsCost > limit || candidate == best) return;
            if (best && itsCost >= cost) {
                second = std::min(second, itsCost);
                return;
            }
            if (best) second = cost;
            cost = itsCost;
            best = candidate;
        };
        for (const auto& suggestion : spelling_.suggest(word)) {
            if (differsByAccents(word, suggestion)) return std::nullopt;
            if (std::ranges::all_of(suggestion, isAscii)) consider(suggestion);
        }
        for (const auto& edit : oneEditAway(word))
            if (spelling_.spell(edit)) consider(edit);
        if (!best || second - cost < (cost > sure ? asClose : asClose / 4)) return std::nullopt;
        // One letter for another makes a short word of many a name: "restic", "rustic".
        if (cost > sure && word.size() <= 6 && best->size() == word.size()) return std::nullopt;
        return best;
    }

    double costOf(const std::string& word, const std::string& candidate) const {
        constexpr double never = 1e9;
        // Two words in one are mostly a name, or new.
        if (candidate.find_first_of(" -") != std::string::npos) return never;
        const double distance = typingDistance(word, lowered(candidate));
        // "monday"; short ones are written small on purpose: "perl".
        if (isUpper(candidate.front()) && !candidate.starts_with("I'"))
            return distance == 0 && (word.size() > 5 || isMonth(word)) ? 0 : never;
        if (isCommon(candidate)) return distance;
        return distance > sure ? never : distance + uncommon;
    }

    static bool isMonth(std::string_view word) { return word == "april" || word == "june" || word == "july"; }
    bool isCommon(const std::string& word) const { return common_.empty() || common_.contains(word); }

    Hunspell spelling_{affixFile, wordFile};
    std::unordered_set<std::string> common_ = commonWords();
    std::unordered_map<std::string, std::string> corrections_;
};

WordCorrector::WordCorrector() : dictionary_(std::make_unique<Dictionary>()) {}
WordCorrector::~WordCorrector() = default;

bool WordCorrector::knows(std::string_view word) {
    const auto plain = replaced(word, typographicApostrophe, "'");
    return dictionary_->isRight(plain) || !usualCorrection(lowered(plain)).empty();
}

std::string WordCorrector::correct(std::string_view word) {
    const auto plain = replaced(word, typographicApostrophe, "'");
    const auto corrected = dictionary_->correct(plain);
    if (corrected == plain) return std::string(word);
    return plain.size() == word.size() ? corrected : replaced(corrected, "'", typographicApostrophe);
}

} // namespace quillmark
