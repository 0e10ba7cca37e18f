#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

// How unlikely it is that somebody who typed the one meant the other; about one for each slip of the fingers,
// less for the common ones. Compares bytes; both in lower case.
double typingDistance(std::string_view typed, std::string_view meant);

// "café" for "cafe", which is in small letters.
bool differsByAccents(std::string_view word, std::string_view suggestion);

// Every text that one slip may have been made from: it suggests what hunspell leaves out.
std::vector<std::string> oneEditAway(const std::string& word);

} // namespace quillmark
