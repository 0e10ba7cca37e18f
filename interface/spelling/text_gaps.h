// What stands between two words of an English text: blanks and punctuation. Plain functions, any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillmark {

bool isBlank(std::string_view gap);

// Whether the next word begins a sentence: a full stop, or exclamation or question marks, and nothing but
// blanks.
bool endsSentence(std::string_view gap);

// What comes behind the gap.
enum class GapBefore { word, capital, end };

// Without the blanks that nobody means: two where one belongs, those before a punctuation mark. Layout stays.
std::string tidied(std::string_view gap, GapBefore next);

} // namespace quillmark
