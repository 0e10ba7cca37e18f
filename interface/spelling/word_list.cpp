#include "spelling/word_list.h"

#include "spelling/ascii.h"
#include "spelling/slips.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quillmark {
namespace {

std::size_t commonBeginning(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
}

} // namespace

WordList::WordList(std::vector<std::string> words) : words_(std::move(words)) {
    std::erase_if(words_, [](const std::string& word) {
        return word.empty() || word.size() > Slips::mostLetters || !std::ranges::all_of(word, isLower);
    });
    std::ranges::sort(words_);
    words_.erase(std::unique(words_.begin(), words_.end()), words_.end());
}

bool WordList::contains(std::string_view word) const {
    return std::ranges::binary_search(words_, word, {},
                                      [](const std::string& each) { return std::string_view(each); });
}

// In alphabetical order most words begin like the one before, so the work for that beginning is kept, and
// words whose common beginning already costs too much are passed over together.
std::vector<WordList::Match> WordList::near(std::string_view typed, double limit) const {
    std::vector<Match> matches;
    Slips slips(typed);
    std::string_view last; // the word that `slips` holds the beginning of,
    std::size_t known = 0; // up to here;
    bool hopeless = false; // and whether words that begin so cost too much
    for (const std::string& word : words_) {
        const std::size_t common = std::min(commonBeginning(last, word), known);
        if (hopeless && common == known) continue;
        last = word;
        known = common;
        hopeless = false;
        while (known < word.size() && !hopeless) {
            slips.set(known, word[known]);
            ++known;
            hopeless = slips.leastCost(known) > limit;
        }
        if (hopeless) continue;
        if (const double cost = slips.cost(word.size()); cost <= limit) matches.push_back({word, cost});
    }
    return matches;
}

} // namespace quillmark
