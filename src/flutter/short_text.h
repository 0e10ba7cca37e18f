// Texts of up to 16 bytes, such as most keys, without a call and a loop: two numbers cover all bytes, some of
// them twice. Internal to this room.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace flutter {

inline constexpr std::size_t mostShortBytes = 16;

// The highest bit of every byte, which is 0 in ASCII.
inline constexpr std::uint64_t highestBits = 0x8080808080808080;

template <class Number>
bool endsAreAscii(std::string_view text) {
    Number first, last;
    std::memcpy(&first, text.data(), sizeof first);
    std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
    return ((first | last) & static_cast<Number>(highestBits)) == 0;
}

// False also when the text is not short.
inline bool isShortAscii(std::string_view text) {
    if (text.size() > mostShortBytes) return false;
    if (text.size() >= 8) return endsAreAscii<std::uint64_t>(text);
    if (text.size() >= 4) return endsAreAscii<std::uint32_t>(text);
    if (text.size() >= 2) return endsAreAscii<std::uint16_t>(text);
    return text.empty() || static_cast<std::uint8_t>(text[0]) < 0x80;
}

// g++ 12 makes it a call, which would take a fifth of the time of a short event.
template <class Number>
[[gnu::always_inline]] inline bool copyEnds(std::uint8_t* to, std::string_view text) {
    Number first, last;
    std::memcpy(&first, text.data(), sizeof first);
    std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + text.size() - sizeof last, &last, sizeof last);
    return ((first | last) & static_cast<Number>(highestBits)) == 0;
}

// Copies a short text, and says whether it is ASCII.
inline bool copyShort(std::uint8_t* to, std::string_view text) {
    if (text.size() >= 8) return copyEnds<std::uint64_t>(to, text);
    if (text.size() >= 4) return copyEnds<std::uint32_t>(to, text);
    if (text.size() >= 2) return copyEnds<std::uint16_t>(to, text);
    if (text.empty()) return true;
    *to = static_cast<std::uint8_t>(text[0]);
    return *to < 0x80;
}

} // namespace flutter
