#include "views/long_lines.h"

#include <algorithm>

namespace quillmark {

std::size_t BrokenLines::placeOf(std::size_t place) const {
    const auto before = std::upper_bound(breaks.begin(), breaks.end(), place) - breaks.begin();
    return place + static_cast<std::size_t>(before);
}

BrokenLines breakLongLines(std::string_view text) {
    constexpr std::size_t longLine = 1000; // bytes
    constexpr auto separator = "\u2029";
    BrokenLines broken;
    std::size_t line = 0, character = 0;
    for (const char c : text) {
        broken.text += c;
        if ((c & 0xC0) != 0x80) ++character;
        line = c == '\n' ? 0 : line + 1;
        if (c != ' ' || line < longLine) continue;
        broken.text += separator;
        broken.breaks.push_back(character);
        line = 0;
    }
    return broken;
}

} // namespace quillmark
