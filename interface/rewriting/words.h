// A text as the words that a person would compare, in any script.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillmark {

struct Word {
    std::string_view text; // a view of the text that was taken apart
    std::size_t start = 0; // like `end` in characters (code points), as text widgets count
    std::size_t end = 0;
};

// Words, punctuation marks and signs; what is between two of them is blank. Any thread.
std::vector<Word> wordsOf(std::string_view text);

// Code points.
std::size_t characters(std::string_view text);

} // namespace quillmark
