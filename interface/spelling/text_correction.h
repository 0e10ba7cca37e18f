// A text with its spelling and what goes with it corrected, word by word. It changes only what is wrong
// beyond doubt: a mistake that stays is better than one that is made.
#pragma once

#include "spelling/languages.h"
#include "spelling/text_pieces.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quillmark {

// Used by the thread of the languages, which outlive it.
class TextCorrection {
public:
    TextCorrection(std::string text, Languages& languages);
    TextCorrection(const TextCorrection&) = delete;
    TextCorrection& operator=(const TextCorrection&) = delete;

    // The next word with what stands before it, absent at the end. What follows never changes it.
    std::optional<std::string> next();

private:
    bool isRepeated(std::size_t at) const;
    bool startsSentence(std::size_t at) const;
    std::string gapBefore(std::size_t at) const;
    std::string wordAt(std::size_t at) const;

    std::string text_;
    std::vector<TextPiece> pieces_; // point into the text
    TextLanguage language_;
    bool severalSentences_ = false;
    std::size_t next_ = 0;
};

} // namespace quillmark
