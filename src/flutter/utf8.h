// Whether bytes are UTF-8, and a repaired copy when they are not. Plain functions; any thread.
#pragma once

#include "flutter/short_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace flutter {

// The length of the longest beginning that is UTF-8.
std::size_t validUtf8Prefix(std::string_view bytes);

bool isUtf8InFull(std::string_view bytes); // the same in any case, and slower for most short texts
inline bool isUtf8(std::string_view bytes) { return isShortAscii(bytes) || isUtf8InFull(bytes); }

// Copies the bytes to memory that is large enough, and says whether they are UTF-8: most text is looked at as
// it is copied.
bool copyUtf8InFull(std::uint8_t* to, std::string_view bytes);
inline bool copyUtf8(std::uint8_t* to, std::string_view bytes) {
    if (bytes.size() > mostShortBytes) return copyUtf8InFull(to, bytes);
    return copyShort(to, bytes) || isUtf8InFull(bytes);
}

// A copy with U+FFFD in place of every byte that belongs to no well-formed sequence.
std::string repairedUtf8(std::string_view bytes);

} // namespace flutter
