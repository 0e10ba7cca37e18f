// What a dictionary does not say about English words. Plain functions, any thread; words in small letters,
// with the plain apostrophe.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

// In small letters; takes any letters.
std::string lowered(std::string_view word);

// What a slip that is clear by itself stands for, as in "alot", "cant" and "monday"; empty when it is none.
std::string usualCorrection(const std::string& word);

// The names that usualCorrection() gives their capital: "monday".
std::vector<std::string> smallNames();

// "imho", "btw": written so on purpose.
bool isShorthand(std::string_view word);

// "stdout", "struct": words of people who work with computers.
bool isJargon(std::string_view word);

// "etc", "approx": a full stop behind it ends no sentence for certain.
bool isAbbreviation(std::string_view word);

} // namespace quillmark
