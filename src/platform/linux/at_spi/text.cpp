#include "platform/linux/at_spi/text.h"

#include "platform/linux/at_spi/text_quirks.h"

namespace platform::at_spi {
namespace {

Question textQuestion(const Object& object, const char* method, const char* answerTypes,
                      Variant values = nullptr) {
    return {object.program, object.path, interfaces::text, method, answerTypes, std::move(values)};
}

struct Selection {
    CFRange range; // the caret's place when there is no selection and the caret was asked for
    bool exists = false;
    bool known = true; // false: where it is cannot be told
};

enum class Caret { ask, leave };

std::optional<Selection> selectionOf(Bus& bus, const Object& object, Toolkit toolkit, Caret caretWanted) {
    const bool chromium = toolkit == Toolkit::chromium;
    std::vector<Question> questions;
    questions.push_back(textQuestion(object, "GetNSelections", "(i)"));
    questions.push_back(textQuestion(object, "GetSelection", "(ii)", arguments("(i)", 0)));
    if (caretWanted == Caret::ask || chromium)
        questions.push_back(property(object, interfaces::text, "CaretOffset"));
    if (chromium) questions.push_back(allText(object));
    const auto answers = bus.ask(std::move(questions));
    if (!answers[0].value) return std::nullopt;

    gint32 count = 0;
    g_variant_get(answers[0].value.get(), "(i)", &count);
    // Firefox's caret can be nowhere, at -1.
    const auto caret = answers.size() > 2 ? intPropertyIn(answers[2]).value_or(-1) : -1;
    // Without a selection GetSelection says one thing or another.
    if (count <= 0) return Selection{{caret, 0}, false, caret >= 0};
    if (!answers[1].value) return std::nullopt;
    gint32 start = 0, end = 0;
    g_variant_get(answers[1].value.get(), "(ii)", &start, &end);
    if (end < start) std::swap(start, end);
    const CFRange range{start, std::int64_t{end} - start};
    if (!chromium) return Selection{range, true, start >= 0};
    const auto text = stringIn(answers[3]);
    const auto corrected = text ? trueRange(*text, range, caret) : std::nullopt;
    return Selection{corrected.value_or(range), true, corrected.has_value()};
}

std::string clean(std::string text, Toolkit toolkit) {
    return toolkit == Toolkit::gecko ? withoutFillers(std::move(text)) : text;
}

} // namespace

Question textBetween(const Object& object, std::int64_t start, std::int64_t end) {
    return textQuestion(object, "GetText", "(s)",
                        arguments("(ii)", static_cast<gint32>(start), static_cast<gint32>(end)));
}

Question allText(const Object& object) { return textBetween(object, 0, -1); }

std::optional<std::string> textOf(Bus& bus, const Object& object, Toolkit toolkit) {
    auto text = stringIn(bus.ask(allText(object)));
    // Firefox answers the first question for a long text (1 MB) with an empty one, the next one right.
    if (text && text->empty() &&
        intPropertyIn(bus.ask(property(object, interfaces::text, "CharacterCount"))).value_or(0) != 0)
        text = stringIn(bus.ask(allText(object)));
    return text ? std::optional(clean(std::move(*text), toolkit)) : std::nullopt;
}

std::optional<SelectedText> selectedTextOf(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto selection = selectionOf(bus, object, toolkit, Caret::leave);
    if (!selection) return std::nullopt;
    if (!selection->exists) return SelectedText{};
    if (!selection->known) return std::nullopt;
    const auto [start, length] = selection->range;
    if (length == 0) return SelectedText{};
    auto text = stringIn(bus.ask(textBetween(object, start, start + length)));
    return text ? std::optional<SelectedText>({clean(std::move(*text), toolkit), start}) : std::nullopt;
}

std::optional<CFRange> selectedRangeOf(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto selection = selectionOf(bus, object, toolkit, Caret::ask);
    return selection && selection->known ? std::optional(selection->range) : std::nullopt;
}

} // namespace platform::at_spi
