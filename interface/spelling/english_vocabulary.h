#pragma once

#include "spelling/dictionary.h"
#include "spelling/word_list.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace quillmark {

// The words of English of both sides of the Atlantic, and which of them a misspelled one stands for. Used by
// one thread only.
class EnglishVocabulary {
public:
    // Whether the lists that it needs are on this computer (Debian's packages hunspell-en-us and scowl). Any
    // thread.
    static bool isInstalled();

    EnglishVocabulary();

    // Whether there is such a word, as it is written.
    bool contains(const std::string& word) const;
    // Whether most people know this word, which is in small letters.
    bool isCommon(const std::string& word) const;

    struct Match {
        std::string word;
        double cost = 0;         // by the slips that it takes (slips.h)
        bool isEveryday = false; // one of the 4,000 words that people use most
    };
    // What somebody meant who wrote this, which is no word, in small letters. Absent when nothing is close
    // enough, or when several words are as close.
    std::optional<Match> meant(const std::string& typed) const;

private:
    std::unique_ptr<Dictionary> american_, british_; // null when not installed
    std::vector<WordList> tiers_;                    // the words that people use most first
    std::unordered_set<std::string> jargon_;         // of computers
};

} // namespace quillmark
