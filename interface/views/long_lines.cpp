#include "views/long_lines.h"

#include <glibmm/unicode.h>

namespace quillmark {

std::vector<std::size_t> breaksOfLongLines(std::string_view text) {
    constexpr std::size_t longLine = 600, longWord = 200; // bytes
    std::vector<std::size_t> breaks;
    std::size_t line = 0, place = 0;
    for (std::size_t at = 0; at < text.size(); ++at, ++line) {
        if ((text[at] & 0xC0) == 0x80) continue; // inside a character
        // Chinese, Japanese and Thai have no blanks between words.
        const auto isLetter = [&] { return Glib::Unicode::isalpha(g_utf8_get_char(text.data() + at)); };
        if (line >= longLine && (text[at - 1] == ' ' || (line >= longLine + longWord && isLetter()))) {
            breaks.push_back(place);
            line = 0;
        }
        if (text[at] == '\n') line = 0;
        ++place;
    }
    return breaks;
}

} // namespace quillmark
