// Where long paragraphs are broken for the eye while they grow. A text view lays out a paragraph as a whole
// each time that it changes: 25 ms for one of 30,000 characters, too much sixty times a second.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillmark {

// In characters, in order: about every six hundred bytes one, behind a blank or before another letter. What
// is added to the text later does not move them.
std::vector<std::size_t> breaksOfLongLines(std::string_view text);

} // namespace quillmark
