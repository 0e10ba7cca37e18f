#include "platform/linux/at_spi/text.h"

#include "platform/linux/at_spi/text_quirks.h"

namespace platform::at_spi {
namespace {

Call textCall(const Object& object, const char* method, const char* replyTypes, Variant values = nullptr) {
    return {object.program, object.path, interfaces::text, method, replyTypes, std::move(values)};
}

struct Selection {
    CFRange range; // the caret's place when there is no selection and the caret was asked for
    bool exists = false;
    bool known = true; // false: where it is cannot be told
};

enum class Caret { ask, leave };

std::optional<Selection> selectionOf(Bus& bus, const Object& object, Toolkit toolkit, Caret caretWanted) {
    const bool chromium = toolkit == Toolkit::chromium;
    std::vector<Call> calls;
    calls.push_back(textCall(object, "GetNSelections", "(i)"));
    calls.push_back(textCall(object, "GetSelection", "(ii)", arguments("(i)", 0)));
    if (caretWanted == Caret::ask || chromium)
        calls.push_back(property(object, interfaces::text, "CaretOffset"));
    if (chromium) calls.push_back(allText(object));
    const auto replies = bus.call(std::move(calls));
    if (!replies[0].value) return std::nullopt;

    gint32 count = 0;
    g_variant_get(replies[0].value.get(), "(i)", &count);
    // In Firefox the caret can be at -1, nowhere.
    const auto caret = replies.size() > 2 ? intPropertyIn(replies[2]).value_or(-1) : -1;
    // Without a selection GetSelection(0) is (caret, caret), (0, 0) or (-1, -1), depending on the toolkit.
    if (count <= 0) return Selection{{caret, 0}, false, caret >= 0};
    if (!replies[1].value) return std::nullopt;
    gint32 start = 0, end = 0;
    g_variant_get(replies[1].value.get(), "(ii)", &start, &end);
    if (end < start) std::swap(start, end);
    const CFRange range{start, std::int64_t{end} - start};
    if (!chromium) return Selection{range, true, start >= 0};
    const auto text = stringIn(replies[3]);
    const auto corrected = text ? trueRange(*text, range, caret) : std::nullopt;
    return Selection{corrected.value_or(range), true, corrected.has_value()};
}

std::string clean(std::string text, Toolkit toolkit) {
    return toolkit == Toolkit::gecko ? withoutFillers(std::move(text)) : text;
}

} // namespace

Call textBetween(const Object& object, std::int64_t start, std::int64_t end) {
    return textCall(object, "GetText", "(s)",
                    arguments("(ii)", static_cast<gint32>(start), static_cast<gint32>(end)));
}

Call allText(const Object& object) { return textBetween(object, 0, -1); }

std::optional<std::string> textOf(Bus& bus, const Object& object, Toolkit toolkit) {
    auto text = stringIn(bus.call(allText(object)));
    // Firefox replies to the first call for a long text (1 MB) with an empty one; the next reply is right.
    if (text && text->empty() &&
        intPropertyIn(bus.call(property(object, interfaces::text, "CharacterCount"))).value_or(0) != 0)
        text = stringIn(bus.call(allText(object)));
    return text ? std::optional(clean(std::move(*text), toolkit)) : std::nullopt;
}

std::optional<SelectedText> selectedTextOf(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto selection = selectionOf(bus, object, toolkit, Caret::leave);
    if (!selection) return std::nullopt;
    if (!selection->exists) return SelectedText{};
    if (!selection->known) return std::nullopt;
    const auto [start, length] = selection->range;
    if (length == 0) return SelectedText{};
    auto text = stringIn(bus.call(textBetween(object, start, start + length)));
    return text ? std::optional<SelectedText>({clean(std::move(*text), toolkit), start}) : std::nullopt;
}

std::optional<CFRange> selectedRangeOf(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto selection = selectionOf(bus, object, toolkit, Caret::ask);
    return selection && selection->known ? std::optional(selection->range) : std::nullopt;
}

} // namespace platform::at_spi
