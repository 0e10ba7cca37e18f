// What was changed in a text, word by word, so that it can be marked. Any thread.
#pragma once

#include <compare>
#include <cstddef>
#include <string_view>
#include <vector>

namespace quillmark {

// In characters (code points), `end` behind the last one.
struct Span {
    std::size_t start = 0;
    std::size_t end = 0;

    friend auto operator<=>(const Span&, const Span&) = default;
};

struct Differences {
    std::vector<Span> removed = {}; // of the text before, in order
    std::vector<Span> added = {};   // of the text after, in order
    std::size_t count = 0;          // places in which the texts differ
    // Hardly a word is the same, as in a translation: nothing is marked.
    bool anew = false;
};

Differences differences(std::string_view before, std::string_view after);

// The same while `after` still grows: what may yet come is not counted as removed.
Differences differencesSoFar(std::string_view before, std::string_view after);

// What both texts begin with: its length in bytes, whole characters only.
std::size_t commonStart(std::string_view a, std::string_view b);

// Where the spans of a text are once it was edited in one place.
std::vector<Span> movedByEdit(std::vector<Span> spans, std::string_view before, std::string_view after);

} // namespace quillmark
