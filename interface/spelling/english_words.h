// What a dictionary of American English does not say about English words. Plain functions, any thread; words
// in lower case, with the plain apostrophe.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

// In small letters; takes any letters.
std::string lowered(std::string_view word);

// What a slip that is clear by itself stands for, as in "alot" and "cant"; empty when it is none. Closest
// words and dictionaries have other answers to these.
std::string_view usualCorrection(std::string_view word);

// "grey", "learnt".
bool isBritish(std::string_view word);

// The American spellings of a word that may be British, as in "favourite" and "organised".
std::vector<std::string> americanSpellings(std::string_view word);

// "thx", "lol": written so on purpose.
bool isShorthand(std::string_view word);

// "etc", "approx": a full stop behind it ends no sentence for certain.
bool isAbbreviation(std::string_view word);

} // namespace quillmark
