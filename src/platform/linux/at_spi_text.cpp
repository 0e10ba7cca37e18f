#include "platform/linux/at_spi_text.h"

namespace platform::at_spi {
namespace {

/// U+FFFC stands for a child whose text is in the child.
constexpr std::string_view embeddedChild = "\uFFFC";

Question textQuestion(const Object& object, const char* method, const char* answerTypes,
                      Variant values = nullptr) {
    return {object.program, object.path, interfaces::text, method, answerTypes, std::move(values)};
}

Question textBetween(const Object& object, std::int64_t start, std::int64_t end) {
    return textQuestion(object, "GetText", "(s)",
                        arguments("(ii)", static_cast<gint32>(start), static_cast<gint32>(end)));
}

Question allText(const Object& object) { return textBetween(object, 0, -1); }

struct Selection {
    CFRange range;
    bool exists = false;
    bool known = true; // false: something is selected, but where cannot be told
};

std::optional<Selection> selectionOf(Bus& bus, const Object& object, Toolkit toolkit) {
    std::vector<Question> questions;
    questions.push_back(textQuestion(object, "GetNSelections", "(i)"));
    questions.push_back(textQuestion(object, "GetSelection", "(ii)", arguments("(i)", 0)));
    questions.push_back(property(object, interfaces::text, "CaretOffset"));
    if (toolkit == Toolkit::chromium) questions.push_back(allText(object));
    const auto answers = bus.ask(std::move(questions));
    if (!answers[0].value) return std::nullopt;

    gint32 count = 0;
    g_variant_get(answers[0].value.get(), "(i)", &count);
    const auto caret = intPropertyIn(answers[2]);
    // Without a selection the range is the caret's, whatever GetSelection says.
    if (count <= 0) return Selection{.range = {caret.value_or(-1), 0}, .known = caret.value_or(-1) >= 0};
    if (!answers[1].value) return std::nullopt;
    gint32 start = 0, end = 0;
    g_variant_get(answers[1].value.get(), "(ii)", &start, &end);
    if (end < start) std::swap(start, end);
    const CFRange range{start, std::int64_t{end} - start};
    if (toolkit != Toolkit::chromium) return Selection{range, true, start >= 0};
    const auto text = stringIn(answers[3]);
    const auto corrected = text && caret ? trueRange(*text, range, *caret) : std::nullopt;
    return Selection{corrected.value_or(range), true, corrected.has_value()};
}

} // namespace

std::optional<std::string> textOf(Bus& bus, const Object& object, Toolkit toolkit) {
    auto text = stringIn(bus.ask(allText(object)));
    // Firefox answers the first question for a long text (1 MB) with an empty one, the next one right.
    if (text && text->empty() &&
        intPropertyIn(bus.ask(property(object, interfaces::text, "CharacterCount"))).value_or(0) != 0)
        text = stringIn(bus.ask(allText(object)));
    if (text && toolkit == Toolkit::gecko) return withoutFillers(std::move(*text));
    return text;
}

std::optional<std::string> selectedTextOf(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto selection = selectionOf(bus, object, toolkit);
    if (!selection) return std::nullopt;
    if (!selection->exists) return "";
    if (!selection->known) return std::nullopt;
    if (selection->range.length == 0) return "";
    const auto [start, length] = selection->range;
    auto text = stringIn(bus.ask(textBetween(object, start, start + length)));
    // Part of what is selected lies in a child; which part, the child's own selection would say.
    if (text && text->find(embeddedChild) != std::string::npos) return std::nullopt;
    if (text && toolkit == Toolkit::gecko) return withoutFillers(std::move(*text));
    return text;
}

std::optional<CFRange> selectedRangeOf(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto selection = selectionOf(bus, object, toolkit);
    return selection && selection->known ? std::optional(selection->range) : std::nullopt;
}

} // namespace platform::at_spi
