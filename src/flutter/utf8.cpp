#include "flutter/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace flutter {
namespace {

// The length of the well-formed sequence at the start, 0 when there is none (Unicode 15, table 3-7).
std::size_t sequenceLength(std::string_view bytes) {
    const auto at = [&](std::size_t index) { return static_cast<std::uint8_t>(bytes[index]); };
    const std::uint8_t lead = at(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;

    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes.size() < length) return 0;
    const std::uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (at(1) < lowest || at(1) > highest) return 0;
    for (std::size_t index = 2; index < length; ++index)
        if ((at(index) & 0xC0) != 0x80) return 0;
    return length;
}

// Most text is ASCII: eight bytes at a time.
std::size_t asciiWords(std::string_view bytes) {
    std::size_t length = 0;
    for (std::uint64_t word = 0; bytes.size() - length >= sizeof word; length += sizeof word) {
        std::memcpy(&word, bytes.data() + length, sizeof word);
        if ((word & 0x8080808080808080) != 0) break;
    }
    return length;
}

} // namespace

std::size_t validUtf8Prefix(std::string_view bytes) {
    std::size_t valid = 0;
    while (valid < bytes.size()) {
        valid += asciiWords(bytes.substr(valid));
        // Up to the end of this word one sequence at a time; then it may be worth looking for ASCII again.
        const std::size_t stop = std::min(bytes.size(), valid + sizeof(std::uint64_t));
        while (valid < stop) {
            const std::size_t length = sequenceLength(bytes.substr(valid));
            if (length == 0) return valid;
            valid += length;
        }
    }
    return valid;
}

bool isUtf8(std::string_view bytes) { return validUtf8Prefix(bytes) == bytes.size(); }

std::string repairedUtf8(std::string_view bytes) {
    std::string repaired;
    for (;;) {
        const std::size_t valid = validUtf8Prefix(bytes);
        repaired += bytes.substr(0, valid);
        if (valid == bytes.size()) return repaired;
        repaired += "\xEF\xBF\xBD";
        bytes.remove_prefix(valid + 1);
    }
}

} // namespace flutter
