// Lists of misspelled words and of what must stay as it is, and how the interface's spelling corrector does
// on them.
#pragma once

#include "spelling/languages.h"
#include "spelling/word_corrector.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace spelling_lists {

struct Result {
    std::size_t all = 0, right = 0, wrong = 0;   // entries; right: as they should be
    std::vector<std::string> wrongOnes = {};     // "htop became stop"
    std::vector<std::chrono::nanoseconds> times; // of each entry
};

// Of misspellings.txt: misspelled words and what they mean.
Result misspellings(quillmark::WordCorrector& corrector);

// Of names.txt, technical.txt or british.txt: words that are right.
Result words(const std::string& list, quillmark::WordCorrector& corrector);

// Of foreign.txt or unchanged.txt: texts, a line each, in which nothing is wrong.
Result texts(const std::string& list, quillmark::Languages& languages);

} // namespace spelling_lists
