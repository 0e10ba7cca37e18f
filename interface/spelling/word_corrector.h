#pragma once

#include <string>
#include <string_view>

namespace quillmark {

// Corrects the spelling of single words of one language. Used by one thread only.
class WordCorrector {
public:
    virtual ~WordCorrector() = default;

    // Whether the word speaks for this language: a usual one of it, or a usual slip.
    virtual bool knows(std::string_view word) = 0;

    // The word as it should be written; the word itself when it is right, unknown, or too far from any other.
    // With `certain` false the text may be in another language, and only the surest corrections are made.
    virtual std::string correct(std::string_view word, bool certain) = 0;
};

} // namespace quillmark
