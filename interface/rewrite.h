// The rewriting itself. Plain function, any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillmark {

// The text with common misspellings corrected, stray blanks removed and sentences begun with a capital. Text
// and answer are UTF-8; only English words and ASCII blanks are touched, and a corrected text comes back
// unchanged.
std::string rewrite(std::string_view text);

} // namespace quillmark
