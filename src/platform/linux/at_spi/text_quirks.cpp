#include "platform/linux/at_spi/text_quirks.h"

#include <algorithm>
#include <vector>

namespace platform::at_spi {
namespace {

constexpr std::string_view filler = "\uFEFF";

// In UTF-8 exactly the characters beyond the basic plane start with such a byte.
bool startsBeyondBasicPlane(char byte) { return (static_cast<unsigned char>(byte) & 0xF8U) == 0xF0; }
bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

// The offsets in `text`, counted in characters, that Chromium reports as `reported`: two when the character
// before the second one is beyond the basic plane.
std::vector<std::int64_t> meantBy(const std::string& text, std::int64_t reported) {
    std::vector<std::int64_t> offsets;
    std::int64_t offset = 0, shown = 0; // the same place, as it is and as Chromium reports it
    if (reported == 0) offsets.push_back(0);
    for (const char byte : text) {
        if (continuesCharacter(byte)) continue;
        ++offset;
        if (!startsBeyondBasicPlane(byte)) ++shown;
        if (shown == reported) offsets.push_back(offset);
        if (shown > reported) break;
    }
    return offsets;
}

} // namespace

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

std::size_t countOfEmbeddedChildren(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(embeddedChild, at)) != text.npos; at += embeddedChild.size())
        ++count;
    return count;
}

std::optional<CFRange> trueRange(const std::string& text, CFRange reported, std::int64_t caret) {
    if (std::ranges::none_of(text, startsBeyondBasicPlane)) return reported;
    const std::int64_t reportedEnd = reported.location + reported.length;
    std::vector<CFRange> possible;
    for (const std::int64_t start : meantBy(text, reported.location))
        for (const std::int64_t end : meantBy(text, reportedEnd))
            if (start < end && (caret < 0 || start == caret || end == caret))
                possible.push_back({start, end - start});
    if (possible.size() == 1) return possible.front();
    // A version that reports the selection as it is.
    if (possible.empty() && (reported.location == caret || reportedEnd == caret)) return reported;
    return std::nullopt;
}

} // namespace platform::at_spi
