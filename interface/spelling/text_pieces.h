// A text cut into words, and which of them a spelling corrector may touch.
#pragma once

#include <string_view>
#include <vector>

namespace quillmark {

// One word with what stands before it; the last piece of a text may have no word. All point into the text.
struct TextPiece {
    std::string_view before;
    std::string_view word;
    // An ordinary word: letters with apostrophes, at most the first one a capital, and no part of an address,
    // a path, a number or code.
    bool isOrdinary = false;
};

// Together the pieces are the text. Any thread.
std::vector<TextPiece> textPieces(std::string_view text);

} // namespace quillmark
