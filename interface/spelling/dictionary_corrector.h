#pragma once

#include "spelling/dictionary.h"
#include "spelling/word_corrector.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillmark {

// Any language of which nothing is known but its dictionary: corrects one slip in a word, where only one word
// can be meant.
class DictionaryCorrector : public WordCorrector {
public:
    explicit DictionaryCorrector(std::unique_ptr<Dictionary> dictionary);

    bool knows(std::string_view word) override;
    std::string correct(std::string_view word, bool certain) override;

private:
    std::string find(const std::string& word) const;

    std::unique_ptr<Dictionary> dictionary_; // never null
    std::unordered_map<std::string, std::string> found_;
};

} // namespace quillmark
