#include "platform/linux/typing/put_back.h"

#include <cstdint>

namespace platform::typing {
namespace {

using Kind = at_spi::Event::Kind;

// What stands from a place on, which Qt counts in units of UTF-16. Nothing behind the end.
std::string_view from(std::string_view text, std::int64_t place) {
    while (place > 0 && !text.empty()) {
        place -= static_cast<unsigned char>(text.front()) >= 0xF0 ? 2 : 1;
        do
            text.remove_prefix(1);
        while (!text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0) == 0x80);
    }
    return text;
}

// Qt counts an end of the last paragraph, which is no character and is not put back.
bool isPutBack(const at_spi::Event& removed, const at_spi::Event& inserted, std::string_view text) {
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
bool isBehindTheEnd(const at_spi::Event& event, std::string_view text) {
    return event.kind == Kind::textRemoved && event.length == 1 && !text.empty() &&
           from(text, event.position).empty();
}

} // namespace

std::vector<at_spi::Event> withoutPutBack(const std::vector<at_spi::Event>& events, std::string_view text) {
    std::vector<at_spi::Event> left;
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

} // namespace platform::typing
