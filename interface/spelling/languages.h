#pragma once

#include "spelling/text_pieces.h"
#include "spelling/word_corrector.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace quillmark {

// The language of one text, as far as it is known.
struct TextLanguage {
    WordCorrector* corrector = nullptr; // null for a language that cannot be corrected
    bool isEnglish = false;
    // False for a text that is too short to tell: then only what leaves no doubt is corrected.
    bool isCertain = false;
};

// The languages that somebody writes in, with their correctors. English is always one of them. Used by one
// thread only.
class Languages {
public:
    // By their codes, such as "en" and "de", the likeliest first. Those without a dictionary on this computer
    // are left out. Loading takes about 40 ms a dictionary.
    explicit Languages(std::vector<std::string> codes);

    TextLanguage of(std::span<const TextPiece> text);

private:
    struct LanguageCorrector {
        std::string code;
        std::unique_ptr<WordCorrector> corrector;
    };

    std::string first_; // the likeliest; empty when nothing is known
    std::vector<LanguageCorrector> languages_;
};

} // namespace quillmark
