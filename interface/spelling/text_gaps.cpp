#include "spelling/text_gaps.h"

#include <algorithm>

namespace quillmark {
namespace {

constexpr std::string_view blanks = " \t\r\n";

// The marks at the start: one comma, one full stop, or any exclamation and question marks. None of ": ; …",
// which may belong to a face or a ratio.
std::string_view marks(std::string_view text) {
    if (text.empty()) return {};
    if (text.front() == ',' || text.front() == '.') return text.substr(0, 1);
    return text.substr(0, std::min(text.find_first_not_of("!?"), text.size()));
}

// Whether a mark is the last thing on its line; `rest` is what stands between it and the next word.
bool endsLine(std::string_view rest, GapBefore next) {
    if (rest.empty()) return next == GapBefore::end;
    return rest.find_first_not_of(" \r\n") == std::string_view::npos &&
           rest.find('\n') != std::string_view::npos;
}

} // namespace

bool isBlank(std::string_view gap) { return gap.find_first_not_of(blanks) == std::string_view::npos; }

bool endsSentence(std::string_view gap) {
    const auto mark = marks(gap);
    const auto rest = gap.substr(mark.size());
    // An indented line is code or a list.
    const auto line = rest.substr(rest.find_last_of('\n') + 1);
    const bool indented = line.size() < rest.size() && !line.empty();
    return !mark.empty() && mark != "," && !rest.empty() && isBlank(rest) && !indented;
}

std::string tidied(std::string_view gap, GapBefore next) {
    if (gap == "  " && next != GapBefore::end) return " ";
    const std::string_view trimmed = gap.substr(std::min(gap.find_first_not_of(' '), gap.size()));
    const auto mark = marks(trimmed);
    if (mark.empty() || trimmed.size() == gap.size()) return std::string(gap);
    const auto rest = trimmed.substr(mark.size());
    // "Monday ,thank": on one line only, so that this is no list of another kind.
    if (mark == "," && rest.empty() && next != GapBefore::end) return ", ";
    const bool belongsToWordBefore =
        endsLine(rest, next) ||
        (mark == "." ? rest == " " && next == GapBefore::capital : rest.starts_with(' '));
    return std::string(belongsToWordBefore ? trimmed : gap);
}

} // namespace quillmark
