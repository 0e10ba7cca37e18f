#include "views/long_lines.h"

#include <glibmm/unicode.h>
#include <glibmm/ustring.h>

namespace quillmark {

std::vector<std::size_t> breaksOfLongLines(std::string_view text) {
    constexpr std::size_t longLine = 1000, longWord = 500; // bytes
    const Glib::ustring characters(text.data(), text.data() + text.size());
    std::vector<std::size_t> breaks;
    std::size_t line = 0, place = 0;
    bool behindBlank = false;
    for (auto at = characters.begin(); at != characters.end(); ++place) {
        const auto character = *at;
        // Chinese, Japanese and Thai have no blanks between words.
        if (line >= longLine &&
            (behindBlank || (line >= longLine + longWord && Glib::Unicode::isalpha(character)))) {
            breaks.push_back(place);
            line = 0;
        }
        behindBlank = character == ' ';
        const auto start = at++;
        line = character == '\n' ? 0 : line + static_cast<std::size_t>(at.base() - start.base());
    }
    return breaks;
}

} // namespace quillmark
