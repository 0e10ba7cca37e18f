#include "platform/linux/at_spi/put_back.h"

#include "platform/linux/at_spi/utf8.h"

#include <cstdint>

namespace platform::at_spi {
namespace {

using Kind = Event::Kind;

// What stands from a place on, which Qt counts in units of UTF-16. Nothing behind the end.
std::string_view from(std::string_view text, std::int64_t place) {
    while (place > 0 && !text.empty()) {
        place -= startsBeyondBasicPlane(text.front()) ? 2 : 1;
        do
            text.remove_prefix(1);
        while (!text.empty() && continuesCharacter(text.front()));
    }
    return text;
}

// Qt counts an end of the last paragraph, which is no character and is not put back.
bool isPutBack(const Event& removed, const Event& inserted, std::string_view text) {
    if (removed.kind != Kind::textRemoved || inserted.kind != Kind::textInserted || inserted.text.empty() ||
        removed.source != inserted.source || removed.position != inserted.position)
        return false;
    std::string_view paragraph = inserted.text, rest = from(text, removed.position);
    const bool hasEnd = paragraph.ends_with("\u2029");
    if (hasEnd) paragraph.remove_suffix(std::string_view("\u2029").size());
    if (!rest.starts_with(paragraph)) return false;
    rest.remove_prefix(paragraph.size());
    if (hasEnd && !rest.starts_with('\n')) return false;
    return removed.length == inserted.length || (rest.empty() && removed.length == inserted.length + 1);
}

// The end of a last paragraph that is empty.
bool isBehindTheEnd(const Event& event, std::string_view text) {
    return event.kind == Kind::textRemoved && event.length == 1 && !text.empty() &&
           from(text, event.position).empty();
}

} // namespace

std::vector<Event> withoutPutBack(const std::vector<Event>& events, std::string_view text) {
    std::vector<Event> left;
    for (auto event = events.begin(); event != events.end(); ++event) {
        if (isBehindTheEnd(*event, text)) continue;
        const auto next = event + 1;
        if (next != events.end() && isPutBack(*event, *next, text))
            event = next;
        else
            left.push_back(*event);
    }
    return left;
}

} // namespace platform::at_spi
