#include "platform/linux/at_spi/text_quirks.h"

#include "platform/linux/at_spi/utf8.h"

#include <algorithm>
#include <vector>

namespace platform::at_spi {
namespace {

constexpr std::string_view filler = "\uFEFF";

// The offsets in `text`, counted in characters, that Chromium 156 reports as `reported`: it takes such an
// offset for a number of UTF-16 units, and reports how many characters these are. Two offsets when the next
// character is beyond the basic plane, for the first of its two units is no character yet.
std::vector<std::int64_t> reportedAs(const std::string& text, std::int64_t reported) {
    std::vector<std::int64_t> offsets;
    std::int64_t characters = 0, units = 0;
    for (const char byte : text) {
        if (continuesCharacter(byte)) continue;
        const bool isPair = startsBeyondBasicPlane(byte);
        if (characters == reported && isPair) offsets = {units + 1};
        if (characters < reported) units += isPair ? 2 : 1;
        ++characters;
    }
    if (reported <= characters) offsets.push_back(units);
    std::erase_if(offsets, [&](std::int64_t offset) { return offset > characters; });
    return offsets;
}

} // namespace

bool isHidden(std::string_view text) {
    for (const std::string_view dot : {"\u25CF", "\u2022", "\u2731", "\u273A", "*"}) {
        std::string_view rest = text;
        while (rest.starts_with(dot))
            rest.remove_prefix(dot.size());
        if (rest.empty()) return !text.empty();
    }
    return false;
}

std::string withoutFillers(std::string text) {
    std::size_t end = 0; // of what is kept
    bool beyond = false; // the character just kept is beyond the basic plane
    for (std::size_t i = 0; i < text.size();) {
        if (beyond && text.compare(i, filler.size(), filler) == 0) {
            i += filler.size();
            beyond = false;
            continue;
        }
        if (!continuesCharacter(text[i])) beyond = startsBeyondBasicPlane(text[i]);
        text[end++] = text[i++];
    }
    text.resize(end);
    return text;
}

std::size_t countOfEmbeddedObjects(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(embeddedObject, at)) != text.npos; at += embeddedObject.size())
        ++count;
    return count;
}

std::optional<CFRange> trueRange(const std::string& text, CFRange reported, std::int64_t caret) {
    if (std::ranges::none_of(text, startsBeyondBasicPlane)) return reported;
    const std::int64_t reportedEnd = reported.location + reported.length;
    std::vector<CFRange> possible;
    for (const std::int64_t start : reportedAs(text, reported.location))
        for (const std::int64_t end : reportedAs(text, reportedEnd))
            if (start < end && (caret < 0 || start == caret || end == caret))
                possible.push_back({start, end - start});
    if (possible.size() == 1) return possible.front();
    // A version of Chromium that reports the selection right.
    if (possible.empty() && (reported.location == caret || reportedEnd == caret)) return reported;
    return std::nullopt;
}

} // namespace platform::at_spi
