#include "rewriting/matches.h"

#include <dtl/dtl.hpp>

#include <algorithm>
#include <iterator>
#include <span>
#include <unordered_map>

namespace quillmark {

namespace {

using Values = std::span<const int>;

// Stretches are compared exactly up to this product of their lengths: that takes a millisecond or two.
constexpr std::size_t mostExactPairs = 250'000;

// A stretch of both sequences whose ends are known to belong together.
struct Block {
    std::size_t startA, endA, startB, endB;
};

// Values that occur once in each stretch, in the order of `a`.
std::vector<Match> uniqueInBoth(Values a, Values b) {
    struct Seen {
        std::size_t inA = 0, inB = 0, placeB = 0;
    };
    std::unordered_map<int, Seen> seen;
    for (const int value : a)
        ++seen[value].inA;
    for (std::size_t i = 0; i < b.size(); ++i)
        if (const auto found = seen.find(b[i]); found != seen.end()) {
            ++found->second.inB;
            found->second.placeB = i;
        }
    std::vector<Match> unique;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (const auto& s = seen[a[i]]; s.inA == 1 && s.inB == 1) unique.emplace_back(i, s.placeB);
    return unique;
}

// The longest part whose second positions rise: what did not change its place.
std::vector<Match> longestRise(const std::vector<Match>& pairs) {
    std::vector<std::size_t> ends; // of the best rise of each length, as indices into `pairs`
    std::vector<std::size_t> before(pairs.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto place =
            std::lower_bound(ends.begin(), ends.end(), pairs[i].second,
                             [&](std::size_t end, std::size_t b) { return pairs[end].second < b; });
        before[i] = place == ends.begin() ? i : *std::prev(place);
        if (place == ends.end())
            ends.push_back(i);
        else
            *place = i;
    }
    std::vector<Match> rise(ends.size());
    for (std::size_t at = ends.empty() ? 0 : ends.back(), left = rise.size(); left > 0; at = before[at])
        rise[--left] = pairs[at];
    return rise;
}

// Without the values that the other stretch does not have: they match nothing and cost the most.
std::vector<std::size_t> placesOfShared(Values values, Values other) {
    std::vector<int> sorted(other.begin(), other.end());
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (std::binary_search(sorted.begin(), sorted.end(), values[i])) places.push_back(i);
    return places;
}

std::vector<int> picked(Values values, const std::vector<std::size_t>& places) {
    std::vector<int> result;
    for (const auto place : places)
        result.push_back(values[place]);
    return result;
}

// Exact, at a cost that grows with the product of the lengths. False when that is too much.
bool matchBlock(Values a, Values b, std::vector<Match>& found, const Block& block) {
    const auto partA = a.subspan(block.startA, block.endA - block.startA);
    const auto partB = b.subspan(block.startB, block.endB - block.startB);
    const auto placesA = placesOfShared(partA, partB), placesB = placesOfShared(partB, partA);
    if (placesA.size() * placesB.size() > mostExactPairs) return false;
    if (placesA.empty()) return true;

    dtl::Diff<int, std::vector<int>> difference(picked(partA, placesA), picked(partB, placesB));
    difference.compose();
    for (const auto& [value, element] : difference.getSes().getSequence())
        if (element.type == dtl::SES_COMMON)
            found.emplace_back(block.startA + placesA[static_cast<std::size_t>(element.beforeIdx) - 1],
                               block.startB + placesB[static_cast<std::size_t>(element.afterIdx) - 1]);
    return true;
}

// Matches in a stretch that is too long to be compared exactly and has no value that occurs once on either
// side: window by window. Each window begins behind the last match in the first three quarters of the one
// before; the matches in its last quarter are not certain.
void matchInWindows(Values a, Values b, std::vector<Match>& found, const Block& block) {
    constexpr std::size_t window = 500, sure = window * 3 / 4;
    Block part = block;
    while (part.startA < block.endA && part.startB < block.endB) {
        part.endA = std::min(part.startA + window, block.endA);
        part.endB = std::min(part.startB + window, block.endB);
        const auto before = found.size();
        matchBlock(a, b, found, part);
        const bool last = part.endA == block.endA && part.endB == block.endB;
        while (!last && found.size() > before &&
               (found.back().first >= part.startA + sure || found.back().second >= part.startB + sure))
            found.pop_back();
        const bool any = found.size() > before;
        part.startA = last ? block.endA : any ? found.back().first + 1 : part.endA;
        part.startB = last ? block.endB : any ? found.back().second + 1 : part.endB;
    }
}

// Values that stand once on either side hold a long stretch together; only what is between them is compared.
void matchBetweenAnchors(Values a, Values b, std::vector<Match>& found, Block block) {
    const auto compare = [&] {
        if (!matchBlock(a, b, found, block)) matchInWindows(a, b, found, block);
    };
    const auto [startA, endA, startB, endB] = block;
    for (const auto& anchor :
         longestRise(uniqueInBoth(a.subspan(startA, endA - startA), b.subspan(startB, endB - startB)))) {
        block.endA = startA + anchor.first;
        block.endB = startB + anchor.second;
        compare();
        found.emplace_back(block.endA, block.endB);
        block.startA = block.endA + 1;
        block.startB = block.endB + 1;
    }
    block.endA = endA;
    block.endB = endB;
    compare();
}

} // namespace

std::vector<Match> matches(const std::vector<int>& a, const std::vector<int>& b) {
    std::vector<Match> found;
    std::size_t start = 0, endA = a.size(), endB = b.size();
    for (; start < std::min(endA, endB) && a[start] == b[start]; ++start)
        found.emplace_back(start, start);
    while (endA > start && endB > start && a[endA - 1] == b[endB - 1]) {
        --endA;
        --endB;
    }

    const Block block{start, endA, start, endB};
    if (!matchBlock(a, b, found, block)) matchBetweenAnchors(a, b, found, block);
    for (; endA < a.size(); ++endA, ++endB)
        found.emplace_back(endA, endB);
    return found;
}

} // namespace quillmark
