#include "text/text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace text {
namespace {

bool isWhitespaceOrNewline(UChar32 character) {
    if (character < 0) return false; // not UTF-8
    return (character >= 0x0A && character <= 0x0D) || character == 0x85 ||
           (U_GET_GC_MASK(character) & U_GC_Z_MASK) != 0;
}

const auto* bytesOf(std::string_view text) { return reinterpret_cast<const std::uint8_t*>(text.data()); }

// The length in bytes of the white space character at the start; 0 when there is none.
std::size_t leadingWhitespace(std::string_view text) {
    const std::string_view window = text.substr(0, U8_MAX_LENGTH);
    const auto length = static_cast<std::int32_t>(window.size());
    std::int32_t index = 0;
    UChar32 character = U_SENTINEL;
    if (length > 0) U8_NEXT(bytesOf(window), index, length, character);
    return isWhitespaceOrNewline(character) ? static_cast<std::size_t>(index) : 0;
}

std::size_t trailingWhitespace(std::string_view text) {
    const std::string_view window =
        text.substr(text.size() - std::min<std::size_t>(text.size(), U8_MAX_LENGTH));
    const auto length = static_cast<std::int32_t>(window.size());
    std::int32_t index = length;
    UChar32 character = U_SENTINEL;
    if (length > 0) U8_PREV(bytesOf(window), 0, index, character);
    return isWhitespaceOrNewline(character) ? static_cast<std::size_t>(length - index) : 0;
}

} // namespace

std::string_view trimWhitespaceAndNewlines(std::string_view text) {
    while (const std::size_t length = leadingWhitespace(text))
        text.remove_prefix(length);
    while (const std::size_t length = trailingWhitespace(text))
        text.remove_suffix(length);
    return text;
}

} // namespace text
