#include "rewriting/differences.h"

#include "rewriting/matches.h"
#include "rewriting/words.h"

#include <algorithm>
#include <unordered_map>

namespace quillmark {

namespace {

using Words = std::vector<Word>;
using Numbers = std::unordered_map<std::string_view, int>;

std::vector<int> numbered(const Words& words, Numbers& numbers) {
    std::vector<int> result;
    result.reserve(words.size());
    for (const auto& word : words)
        result.push_back(numbers.try_emplace(word.text, static_cast<int>(numbers.size())).first->second);
    return result;
}

// What stands before a word, or behind the last one.
std::string_view blankBefore(std::string_view text, const Words& words, std::size_t at) {
    const char* start = at == 0 ? text.data() : words[at - 1].text.data() + words[at - 1].text.size();
    const char* end = at == words.size() ? text.data() + text.size() : words[at].text.data();
    return {start, static_cast<std::size_t>(end - start)};
}

// From one word to before another; of no words the blank between the two that are there.
Span spanOf(const Words& words, std::size_t first, std::size_t next, std::size_t length) {
    if (first < next) return {words[first].start, words[next - 1].end};
    return {first == 0 ? 0 : words[first - 1].end, first == words.size() ? length : words[first].start};
}

void mark(std::vector<Span>& spans, const Span& span) {
    if (span.start < span.end) spans.push_back(span);
}

bool hardlyAnythingLeft(std::size_t matched, std::size_t before, std::size_t after) {
    constexpr std::size_t fewWords = 8; // these are taken in at a glance, however many are new
    return after > fewWords && matched * 5 < std::min(before, after);
}

bool isInsideCharacter(std::string_view text, std::size_t byte) {
    return byte < text.size() && (text[byte] & 0xC0) == 0x80;
}

std::size_t commonEnd(std::string_view a, std::string_view b) {
    const auto ends = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend());
    auto length = static_cast<std::size_t>(ends.first - a.rbegin());
    while (length > 0 && isInsideCharacter(a, a.size() - length))
        --length;
    return length;
}

} // namespace

Differences differences(std::string_view before, std::string_view after) {
    const auto old = wordsOf(before), now = wordsOf(after);
    Numbers numbers;
    const auto a = numbered(old, numbers), b = numbered(now, numbers);
    auto same = matches(a, b);
    if (hardlyAnythingLeft(same.size(), old.size(), now.size())) return {.count = 1, .anew = true};

    Differences result;
    const auto lengthBefore = characters(before), lengthAfter = characters(after);
    same.emplace_back(old.size(), now.size());
    std::size_t i = 0, j = 0; // behind the last match
    for (const auto& [nextI, nextJ] : same) {
        const bool words = i < nextI || j < nextJ;
        if (words || blankBefore(before, old, i) != blankBefore(after, now, j)) {
            ++result.count;
            if (i < nextI || !words) mark(result.removed, spanOf(old, i, nextI, lengthBefore));
            if (j < nextJ || !words) mark(result.added, spanOf(now, j, nextJ, lengthAfter));
        }
        i = nextI + 1;
        j = nextJ + 1;
    }
    return result;
}

Differences differencesSoFar(std::string_view before, std::string_view after) {
    if (after.empty()) return {};
    // What has come so far cannot be about the part of the original that stands far behind it.
    const auto reached = std::min(before.size(), after.size() + after.size() / 4 + 200);
    const auto start = before.substr(0, reached);
    auto result = differences(start, after);
    if (result.anew || result.removed.empty() || result.removed.back().end + 1 < characters(start))
        return result;
    result.removed.pop_back();
    --result.count;
    if (!result.added.empty() && result.added.back().end == characters(after)) result.added.pop_back();
    return result;
}

std::size_t commonStart(std::string_view a, std::string_view b) {
    const auto ends = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    auto length = static_cast<std::size_t>(ends.first - a.begin());
    while (length > 0 && (isInsideCharacter(a, length) || isInsideCharacter(b, length)))
        --length;
    return length;
}

std::vector<Span> movedByEdit(std::vector<Span> spans, std::string_view before, std::string_view after) {
    const auto same = commonStart(before, after);
    const auto rest = commonEnd(before.substr(same), after.substr(same));
    const auto start = characters(before.substr(0, same));
    const auto end = start + characters(before.substr(same, before.size() - same - rest));
    const auto newEnd = start + characters(after.substr(same, after.size() - same - rest));
    const auto moved = [&](std::size_t place) {
        return place >= end ? place - end + newEnd : std::min(place, start);
    };
    for (auto& span : spans)
        span = {moved(span.start), moved(span.end)};
    std::erase_if(spans, [](const Span& span) { return span.start >= span.end; });
    return spans;
}

} // namespace quillmark
