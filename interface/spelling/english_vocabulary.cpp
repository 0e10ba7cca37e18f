#include "spelling/english_vocabulary.h"

#include "spelling/english_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace quillmark {
namespace {

constexpr auto american = "en_US", british = "en_GB";

// Debian's package scowl has the words of English by how many people know them: at level 10 those that
// everybody uses, at 50 those of a small dictionary.
const std::filesystem::path folder = "/usr/share/dict/scowl";

// The rarer a word, the less likely it is what somebody meant, and the shorter the misspelled word, the more
// likely it is none: a name, an abbreviation, a technical word. Both in the costs of slips.h; measured with
// spelling_bench.
struct Tier {
    std::array<std::string_view, 2> levels;
    double unlikelihood;
    std::size_t fewestLetters; // of the misspelled word
    double mostCostOfFour, moreForEachLetter, mostCost;
};
constexpr std::array<Tier, 4> tiers{{{{"10", ""}, 0, 4, 0.45, 0.2, 2.05},
                                     {{"20", ""}, 0, 4, 0.4, 0.1, 1.1},
                                     {{"35", "40"}, 0.55, 4, 0.35, 0.15, 1.55},
                                     {{"50", "55"}, 0.95, 6, 0.2, 0.15, 0.95}}};
// Two words whose costs, with their unlikelihood, lie no farther apart leave a doubt which of them was meant.
constexpr double asClose = 0.15;

double mostCost(const Tier& tier, std::size_t letters) {
    if (letters < tier.fewestLetters) return 0;
    const auto beyondFour = static_cast<double>(std::max<std::size_t>(letters, 4) - 4);
    return std::min(tier.mostCost, tier.mostCostOfFour + tier.moreForEachLetter * beyondFour);
}

void append(std::vector<std::string>& words, const std::string& file) {
    std::ifstream lines(folder / file);
    for (std::string word; std::getline(lines, word);)
        words.push_back(word);
}

WordList wordsOf(const Tier& tier) {
    std::vector<std::string> words;
    if (&tier == &tiers.front()) words = smallNames();
    for (const auto level : tier.levels)
        for (const std::string variety : {"english", "american", "british"})
            append(words, (variety + "-words.").append(level));
    return WordList(std::move(words));
}

} // namespace

bool EnglishVocabulary::isInstalled() {
    return hasDictionary(american) && std::filesystem::exists(folder / "english-words.10");
}

EnglishVocabulary::EnglishVocabulary()
    : american_(Dictionary::open(american)), british_(Dictionary::open(british)) {
    for (const auto& tier : tiers)
        tiers_.push_back(wordsOf(tier));
    std::vector<std::string> jargon;
    append(jargon, "special-hacker.50");
    jargon_.insert(jargon.begin(), jargon.end());
}

bool EnglishVocabulary::contains(const std::string& word) const {
    return (american_ && american_->knows(word)) || (british_ && british_->knows(word)) ||
           jargon_.contains(word) ||
           std::ranges::any_of(tiers_, [&](const WordList& words) { return words.contains(word); });
}

bool EnglishVocabulary::isCommon(const std::string& word) const {
    return std::any_of(tiers_.begin(), tiers_.end() - 1,
                       [&](const WordList& words) { return words.contains(word); });
}

std::optional<EnglishVocabulary::Match> EnglishVocabulary::meant(const std::string& typed) const {
    struct Candidate {
        WordList::Match match;
        std::size_t tier;
        double rank; // the cost and the unlikelihood
    };
    // No word that ranks worse can be the answer, or leave a doubt of it.
    double worstRank = 0;
    for (const auto& tier : tiers)
        worstRank = std::max(worstRank, mostCost(tier, typed.size()) + tier.unlikelihood + asClose);
    std::vector<Candidate> all;
    for (std::size_t tier = 0; tier < tiers.size(); ++tier)
        for (const auto& match : tiers_[tier].near(typed, worstRank - tiers[tier].unlikelihood))
            all.push_back({match, tier, match.cost + tiers[tier].unlikelihood});
    const auto best = std::ranges::min_element(all, {}, &Candidate::rank);
    if (best == all.end() || best->match.cost > mostCost(tiers[best->tier], typed.size()))
        return std::nullopt;
    const auto isAsClose = [&](const Candidate& other) {
        return other.match.word != best->match.word && other.rank - best->rank < asClose;
    };
    if (std::ranges::any_of(all, isAsClose)) return std::nullopt;
    return Match{std::string(best->match.word), best->match.cost, best->tier == 0};
}

} // namespace quillmark
