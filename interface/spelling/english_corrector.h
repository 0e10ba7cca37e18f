#pragma once

#include "spelling/english_vocabulary.h"
#include "spelling/word_corrector.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillmark {

// English of both sides of the Atlantic. Takes ordinary words (text_pieces.h).
class EnglishCorrector : public WordCorrector {
public:
    bool knows(std::string_view word) override;
    std::string correct(std::string_view word, bool certain) override;

private:
    bool isRight(const std::string& word) const;
    bool isLeftAlone(const std::string& word, const std::string& small) const;
    bool isMadeOfWords(const std::string& word) const;
    std::string find(const std::string& word, bool certain) const;
    std::string usualMeaning(const std::string& word, const std::string& small) const;

    EnglishVocabulary vocabulary_;
    std::array<std::unordered_map<std::string, std::string>, 2> found_; // by whether the language is certain
};

} // namespace quillmark
