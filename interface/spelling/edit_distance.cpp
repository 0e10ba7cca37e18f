#include "spelling/edit_distance.h"

#include "spelling/ascii.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quillmark {
namespace {

// Found on lists of typos: these slips are more common than others.
constexpr double swapped = 0.6, doubled = 0.4, apostrophe = 0.3, blank = 0.5, silent = 0.8, any = 1.0;
// The first letter is nearly always right.
constexpr double firstLetter = 0.7;

// A letter too many or too few.
double extra(std::string_view word, std::size_t at) {
    if (word[at] == '\'') return apostrophe;
    if (word[at] == ' ') return blank;
    if (word[at] == 'h') return silent;
    const bool likeNeighbour =
        (at > 0 && word[at - 1] == word[at]) || (at + 1 < word.size() && word[at + 1] == word[at]);
    return likeNeighbour ? doubled : any;
}

} // namespace

double typingDistance(std::string_view typed, std::string_view meant) {
    const std::size_t width = meant.size() + 1;
    std::vector<double> costs((typed.size() + 1) * width);
    const auto cost = [&](std::size_t i, std::size_t j) -> double& { return costs[i * width + j]; };
    for (std::size_t i = 0; i <= typed.size(); ++i) {
        for (std::size_t j = 0; j <= meant.size(); ++j) {
            if (i == 0 && j == 0) continue;
            double best = 1e9;
            if (i > 0) best = std::min(best, cost(i - 1, j) + extra(typed, i - 1));
            if (j > 0) best = std::min(best, cost(i, j - 1) + extra(meant, j - 1));
            if (i > 0 && j > 0)
                best = std::min(best, cost(i - 1, j - 1) + (typed[i - 1] == meant[j - 1] ? 0 : any));
            if (i > 1 && j > 1 && typed[i - 1] == meant[j - 2] && typed[i - 2] == meant[j - 1])
                best = std::min(best, cost(i - 2, j - 2) + swapped);
            cost(i, j) = best;
        }
    }
    const bool firstKept = typed.empty() || meant.empty() || typed.front() == meant.front();
    return costs.back() + (firstKept ? 0 : firstLetter);
}

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
        if (at < word.size() && word.size() > 1) with(at, 1, "");
        if (at + 1 < word.size()) with(at, 2, std::string{word[at + 1], word[at]});
    }
    return edits;
}

} // namespace quillmark
