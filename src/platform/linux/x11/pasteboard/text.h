#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Texts in the encodings that programs deliver them in. Pure functions.
namespace platform::selection {

// The bytes as characters, unchanged.
std::string_view text(std::span<const std::uint8_t> bytes);

// Latin-1, the encoding of the type STRING; characters that it lacks become question marks.
std::vector<std::uint8_t> latin1FromUtf8(std::string_view utf8);

// Well-formed UTF-8 of a text that was delivered with this type; bytes that are no UTF-8 become U+FFFD.
std::string utf8FromDelivered(std::string_view text, std::string_view type);

} // namespace platform::selection
