// Long paragraphs, broken for the eye while they grow. A text view lays out a paragraph as a whole each time
// that it changes: 20 ms for one of 30,000 characters, too much sixty times a second.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

struct BrokenLines {
    std::string text;
    std::vector<std::size_t> breaks; // where one was put in, in characters of the unbroken text

    // Where a place of the unbroken text is in the broken one, both in characters.
    std::size_t placeOf(std::size_t place) const;
};

// With a paragraph separator behind a blank every thousand bytes or so. What is added to the text later does
// not move the breaks.
BrokenLines breakLongLines(std::string_view text);

} // namespace quillmark
