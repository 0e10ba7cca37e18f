#include "spelling/slips.h"

#include <algorithm>

namespace quillmark {
namespace {

// Found on lists of misspelled words.
constexpr double swapped = 0.6, swappedIE = 0.35, doubled = 0.4, finalE = 0.5, vowel = 0.8,
                 weakConsonant = 0.7, anyLetter = 1.0, likeSound = 0.6, otherLetter = 1.1, firstLetter = 0.7;

constexpr bool isOneOf(std::string_view letters, char c) { return letters.find(c) != std::string_view::npos; }

// Letters that sound alike, or nearly: each group once in a word's place of another of it.
constexpr std::array<std::string_view, 8> alike{"aeiouy", "cks", "sz", "gj", "vf", "ckq", "ts", "mn"};

constexpr double replacing(char typed, char meant) {
    if (typed == meant) return 0;
    const bool sounds = std::ranges::any_of(
        alike, [&](std::string_view group) { return isOneOf(group, typed) && isOneOf(group, meant); });
    return sounds ? likeSound : otherLetter;
}

// Some are swallowed in speech: "withold", "suprise", "goverment".
constexpr double leavingOut(char c) {
    return isOneOf("hrnwgu", c) ? weakConsonant : isOneOf("aeiouy", c) ? vowel : anyLetter;
}

constexpr std::size_t alphabetSize = 26;
constexpr std::size_t indexOf(char c) { return static_cast<std::size_t>(c - 'a'); }
constexpr char letterAt(std::size_t i) { return static_cast<char>('a' + static_cast<int>(i)); }

// Each is looked up some hundred thousand times for one misspelled word.
struct Costs {
    std::array<double, alphabetSize> leavingOut{};
    std::array<std::array<double, alphabetSize>, alphabetSize> replacing{}; // by the letters typed and meant
};
constexpr Costs letterCosts = [] {
    Costs all;
    for (std::size_t typed = 0; typed < alphabetSize; ++typed) {
        all.leavingOut[typed] = leavingOut(letterAt(typed));
        for (std::size_t meant = 0; meant < alphabetSize; ++meant)
            all.replacing[typed][meant] = replacing(letterAt(typed), letterAt(meant));
    }
    return all;
}();

double letterCost(char c) { return letterCosts.leavingOut[indexOf(c)]; }
double replaced(char typed, char meant) { return letterCosts.replacing[indexOf(typed)][indexOf(meant)]; }

} // namespace

Slips::Slips(std::string_view typed) : typed_(typed.substr(0, mostLetters)) {
    for (std::size_t column = 1; column <= typed_.size(); ++column)
        costs_[0][column] = costs_[0][column - 1] + extra(column);
}

double Slips::missing(std::size_t row) const {
    const char letter = meant_[row];
    return row > 1 && meant_[row - 1] == letter ? doubled : letterCost(letter);
}

double Slips::extra(std::size_t column) const {
    const char letter = typed_[column - 1];
    if (column > 1 && typed_[column - 2] == letter) return doubled;
    return column == typed_.size() && letter == 'e' ? finalE : letterCost(letter);
}

void Slips::set(std::size_t at, char letter) {
    const std::size_t row = at + 1;
    meant_[row] = letter;
    auto& costs = costs_[row];
    const auto& above = costs_[row - 1];
    const double left = missing(row);
    costs[0] = above[0] + left;
    double least = costs[0];
    for (std::size_t column = 1; column <= typed_.size(); ++column) {
        const char typed = typed_[column - 1];
        const double first = row == 1 && column == 1 && typed != letter ? firstLetter : 0;
        costs[column] = std::min({above[column] + left, costs[column - 1] + extra(column),
                                  above[column - 1] + replaced(typed, letter) + first});
        if (row > 1 && column > 1 && typed == meant_[row - 1] && typed_[column - 2] == letter) {
            const bool ie = (typed == 'i' && letter == 'e') || (typed == 'e' && letter == 'i');
            costs[column] = std::min(costs[column], costs_[row - 2][column - 2] + (ie ? swappedIE : swapped));
        }
        least = std::min(least, costs[column]);
    }
    least_[row] = least;
}

double Slips::cost(std::size_t letters) const {
    const double cost = costs_[letters][typed_.size()];
    return letters > 0 && meant_[letters] == 'e' ? std::min(cost, costs_[letters - 1][typed_.size()] + finalE)
                                                 : cost;
}

// A swap reaches back over two letters.
double Slips::leastCost(std::size_t letters) const {
    return letters == 0 ? 0 : std::min(least_[letters], least_[letters - 1] + swappedIE);
}

} // namespace quillmark
