// Whether bytes are UTF-8 text, and what to make of them when they are not.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace flutter {

// The number of bytes at the start that are UTF-8.
std::size_t validUtf8Prefix(std::string_view bytes);

bool isUtf8(std::string_view bytes);

// A copy with U+FFFD in place of every byte that belongs to no well-formed sequence.
std::string repairedUtf8(std::string_view bytes);

} // namespace flutter
