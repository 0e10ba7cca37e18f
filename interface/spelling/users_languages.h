#pragma once

#include <string>
#include <vector>

namespace quillmark {

// The codes of the languages that this user reads and writes ("de", "en"), the likeliest first: those of the
// locale, and where it names none ("C"), that of the computer's keyboard. May be empty. Any thread.
std::vector<std::string> usersLanguages();

} // namespace quillmark
