#include "platform/linux/at_spi/text.h"

#include "platform/linux/at_spi/text_quirks.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

Call textCall(const Object& object, const char* method, const char* replyTypes, Variant values = nullptr) {
    return {object.program, object.path, interfaces::text, method, replyTypes, std::move(values)};
}

Call textIn(const Object& object, CFRange range) {
    return textBetween(object, range.location, range.location + range.length);
}

std::string clean(std::string text, Toolkit toolkit) {
    return toolkit == Toolkit::gecko ? withoutFillers(std::move(text)) : text;
}

// Firefox 153 replies to the first call for a long text (1 MB) with an empty one, and GTK 4.8 to every call
// for an entry's text up to its end at -1: the text is asked for again, up to its length.
std::optional<std::string> textByLength(Bus& bus, const Object& object) {
    const auto count = intPropertyIn(bus.call(property(object, interfaces::text, "CharacterCount")));
    return count && *count > 0 ? stringIn(bus.call(textBetween(object, 0, *count))) : "";
}

} // namespace

TextReading readText(Bus& bus, const Object& object, Toolkit toolkit, std::optional<CFRange> expected) {
    std::vector<Call> calls;
    calls.push_back(allText(object));
    calls.push_back(textCall(object, "GetNSelections", "(i)"));
    calls.push_back(selectionOf(object));
    calls.push_back(property(object, interfaces::text, "CaretOffset"));
    const bool expectsText = expected && expected->length > 0;
    if (expectsText) calls.push_back(textIn(object, *expected));
    const auto replies = bus.call(std::move(calls));

    // Without one of these, a text with a selection could be taken for one without.
    const auto isLate = [](const Reply& reply) { return reply.failure == Failure::late; };
    TextReading reading;
    if (std::any_of(replies.begin(), replies.begin() + 4, isLate)) return reading;
    auto text = stringIn(replies[0]);
    if (text && text->empty()) text = textByLength(bus, object);
    if (const auto count = intIn(replies[1])) reading.hasSelection = *count > 0;
    // In Firefox the caret can be at -1, nowhere.
    const auto caret = intPropertyIn(replies[3]).value_or(-1);
    if (reading.hasSelection == true) {
        reading.range = rangeIn(replies[2]);
        if (toolkit == Toolkit::chromium && reading.range)
            reading.range = text ? trueRange(*text, *reading.range, caret) : std::nullopt;
        if (expectsText && reading.range == expected) reading.selected = stringIn(replies[4]);
    } else if (reading.hasSelection && caret >= 0) {
        // Not what GetSelection(0) says: (caret, caret), (0, 0), (-1, -1) or an error, depending on the
        // toolkit.
        reading.range = CFRange{caret, 0};
    }
    if (text) reading.text = clean(std::move(*text), toolkit);
    return reading;
}

std::optional<std::string> selectedText(Bus& bus, const Object& object, const TextReading& reading,
                                        Toolkit toolkit) {
    if (!reading.hasSelection || (*reading.hasSelection && !reading.range)) return std::nullopt;
    if (!*reading.hasSelection || reading.range->length == 0) return "";
    // Empty: what Firefox replied first (above).
    const bool isRead = reading.selected && !reading.selected->empty();
    auto text = isRead ? reading.selected : stringIn(bus.call(textIn(object, *reading.range)));
    return text ? std::optional(clean(std::move(*text), toolkit)) : std::nullopt;
}

Call selectionOf(const Object& object) {
    return textCall(object, "GetSelection", "(ii)", arguments("(i)", 0));
}

// Two offsets, in either order.
std::optional<CFRange> rangeIn(const Reply& selection) {
    if (!selection.value) return std::nullopt;
    gint32 start = 0, end = 0;
    g_variant_get(selection.value.get(), "(ii)", &start, &end);
    if (end < start) std::swap(start, end);
    return start < 0 ? std::nullopt : std::optional(CFRange{start, std::int64_t{end} - start});
}

Call allText(const Object& object) { return textBetween(object, 0, -1); }

Call textBetween(const Object& object, std::int64_t start, std::int64_t end) {
    return textCall(object, "GetText", "(s)",
                    arguments("(ii)", static_cast<gint32>(start), static_cast<gint32>(end)));
}

} // namespace platform::at_spi
