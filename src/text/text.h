// The few Unicode operations that the host needs, over ICU. Plain functions; any thread.
//
// Text is UTF-8. Bytes that are not UTF-8 are allowed: they are never white space, and each broken sequence
// counts as one character. Returned views point into the argument.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// The text without white space at both ends: everything of general category Z, U+000A to U+000D and U+0085. A
// tab is not in this class and stays. The time does not depend on the length of what stays.
std::string_view trimWhitespaceAndNewlines(std::string_view text);

struct Cut {
    std::string_view text;
    bool truncated; // something was cut off
};

// At most the first `count` characters as a person counts them (extended grapheme clusters, UAX #29). The
// time depends on the length of what is kept, not of the text.
Cut firstCharacters(std::string_view text, std::size_t count);

// The first character; empty when the text is empty.
std::string_view firstCharacter(std::string_view text);

// Canonical equivalence: "é" equals "e" followed by a combining accent. Stops at the first difference.
// Equivalent texts may count as different when more than a thousand bytes of combining marks follow each
// other.
bool equalStrings(std::string_view a, std::string_view b);

// Full, language-independent lower case. Bytes that are not UTF-8 stay.
std::string lowercased(std::string_view text);

} // namespace text
