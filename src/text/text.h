// The few Unicode questions the host asks. Plain functions, usable on any thread, over ICU.
//
// Text is UTF-8. Bytes that are not UTF-8 do no harm: they are never white space and each broken sequence
// is a character of its own. Returned views point into the argument.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// Without the white space at both ends: everything of general category Z, U+000A to U+000D and U+0085.
// A tab is not in this class and stays. Looks at the ends only.
std::string_view trimWhitespaceAndNewlines(std::string_view text);

struct Cut {
    std::string_view text;
    bool truncated; // something was cut off
};

// At most the first `count` characters as a person counts them (extended grapheme clusters, UAX #29).
// The time depends on what is kept, not on how long the text is.
Cut firstCharacters(std::string_view text, std::size_t count);

// The first character, or nothing of an empty text.
std::string_view firstCharacter(std::string_view text);

// Whether a reader sees the same text: canonical equivalence, in which "é" equals "e" and an accent.
// Stops at the first difference. Equivalent texts may count as different where more than a thousand bytes
// of combining marks stand in a row.
bool equalStrings(std::string_view a, std::string_view b);

// Full, language-independent lower case. Bytes that are not UTF-8 stay as they are.
std::string lowercased(std::string_view text);

} // namespace text
