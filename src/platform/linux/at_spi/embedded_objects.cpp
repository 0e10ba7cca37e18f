#include "platform/linux/at_spi/embedded_objects.h"

#include "platform/linux/at_spi/paragraph.h"
#include "platform/linux/at_spi/text_quirks.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

constexpr int deepest = 12; // lists in lists, quotes in quotes

struct Child {
    Object object;
    Role role = Role::invalid;
    bool text = false;

    // Its text stands on lines of its own.
    bool isBlock() const {
        switch (role) {
        case Role::paragraph:
        case Role::heading:
        case Role::section:
        case Role::list:
        case Role::listItem:
        case Role::blockQuote:
            return true;
        default:
            return false;
        }
    }
};

// The children that stand in the object's text, in their order.
std::vector<Child> embeddedChildren(Bus& bus, const Object& object, Toolkit toolkit) {
    const auto objects = objectsIn(bus.call(childrenOf(object)));
    std::vector<Call> calls;
    for (const Object& child : objects) {
        calls.push_back(roleOf(child));
        calls.push_back(interfacesOf(child));
    }
    const auto replies = bus.call(std::move(calls));
    std::vector<Child> children;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const Role role = roleIn(replies[2 * i]).value_or(Role::invalid);
        // Chromium also lists the runs of an object's own text as children.
        if (toolkit == Toolkit::chromium && role == Role::staticText) continue;
        children.push_back({objects[i], role, hasText(replies[2 * i + 1])});
    }
    return children;
}

// Puts pieces of text together, each block on lines of its own.
class Lines {
public:
    void add(std::string_view run) {
        if (breakDue_ && !run.empty() && run.front() != '\n') text_ += '\n';
        if (!run.empty()) breakDue_ = false;
        text_ += run;
    }
    void addBlock(std::string_view block) {
        if (breakDue_ || (!text_.empty() && text_.back() != '\n')) text_ += '\n';
        if (block.ends_with('\n')) block.remove_suffix(1); // browsers' placeholder in an empty paragraph
        text_ += block;
        breakDue_ = true;
    }
    std::string take() { return std::move(text_); }

private:
    std::string text_;
    bool breakDue_ = false;
};

// `text` with each U+FFFC replaced by the text of the next child, from the one numbered `next` on. Absent
// when one of these is.
template <typename TextOfChild>
std::optional<std::string> filled(std::string_view text, const std::vector<Child>& children, std::size_t next,
                                  TextOfChild textOfChild) {
    Lines lines;
    while (true) {
        const auto at = text.find(embeddedObject);
        lines.add(text.substr(0, at));
        if (at == text.npos) return lines.take();
        text.remove_prefix(at + embeddedObject.size());
        if (next >= children.size()) return std::nullopt;
        const auto inner = textOfChild(next);
        if (!inner) return std::nullopt;
        if (children[next].isBlock())
            lines.addBlock(*inner);
        else
            lines.add(*inner);
        ++next;
    }
}

std::optional<std::string> expanded(Bus& bus, const Object& object, std::string text, Toolkit toolkit,
                                    int depth);

// The whole texts of some children, read together; absent for one that has none: a picture in the text would
// be lost with a rewritten text.
std::vector<std::optional<std::string>> textsOf(Bus& bus, const std::vector<Child>& children, Toolkit toolkit,
                                                int depth) {
    std::vector<std::optional<std::string>> texts(children.size());
    std::vector<Call> calls;
    std::vector<std::size_t> asked;
    for (std::size_t i = 0; i < children.size(); ++i)
        if (children[i].text) {
            asked.push_back(i);
            calls.push_back(allText(children[i].object));
        }
    const auto replies = bus.call(std::move(calls));
    for (std::size_t i = 0; i < asked.size(); ++i) {
        auto text = stringIn(replies[i]);
        texts[asked[i]] =
            text ? expanded(bus, children[asked[i]].object, std::move(*text), toolkit, depth) : std::nullopt;
    }
    return texts;
}

std::optional<std::string> expanded(Bus& bus, const Object& object, std::string text, Toolkit toolkit,
                                    int depth) {
    if (toolkit == Toolkit::gecko) text = withoutFillers(std::move(text));
    const std::size_t count = countOfEmbeddedObjects(text);
    if (count == 0) return text;
    const auto children = embeddedChildren(bus, object, toolkit);
    if (depth >= deepest || children.size() != count) return std::nullopt;
    const auto texts = textsOf(bus, children, toolkit, depth + 1);
    return filled(text, children, 0, [&](std::size_t child) { return texts[child]; });
}

std::optional<std::string> selected(Bus& bus, const Object& object, const TextReading& reading,
                                    Toolkit toolkit, int depth);

// The text of a child in a selection. Only the first and the last one can be selected in part, and each knows
// which part.
std::optional<std::string> selectedIn(Bus& bus, const Child& child, Toolkit toolkit, int depth) {
    if (!child.text) return std::nullopt;
    return selected(bus, child.object, readText(bus, child.object, toolkit), toolkit, depth);
}

std::optional<std::string> selected(Bus& bus, const Object& object, const TextReading& reading,
                                    Toolkit toolkit, int depth) {
    auto selection = selectedText(bus, object, reading, toolkit);
    const std::size_t count = selection ? countOfEmbeddedObjects(*selection) : 0;
    if (count == 0) return selection;

    const auto before = stringIn(bus.call(textBetween(object, 0, reading.range->location)));
    const auto children = embeddedChildren(bus, object, toolkit);
    if (!reading.text || !before || depth >= deepest ||
        children.size() != countOfEmbeddedObjects(*reading.text))
        return std::nullopt;
    const std::size_t first = countOfEmbeddedObjects(*before);
    if (first + count > children.size()) return std::nullopt;
    const std::size_t last = first + count - 1;
    const std::vector<Child> between(children.begin() +
                                         static_cast<std::ptrdiff_t>(std::min(first + 1, last)),
                                     children.begin() + static_cast<std::ptrdiff_t>(last));
    const auto texts = textsOf(bus, between, toolkit, depth + 1);
    return filled(*selection, children, first, [&](std::size_t child) {
        return child == first || child == last ? selectedIn(bus, children[child], toolkit, depth + 1)
                                               : texts[child - first - 1];
    });
}

bool isBrowser(Toolkit toolkit) { return toolkit == Toolkit::chromium || toolkit == Toolkit::gecko; }

std::string withoutEmbeddedObjects(std::string text) {
    for (std::size_t at = 0; (at = text.find(embeddedObject, at)) != text.npos;)
        text.erase(at, embeddedObject.size());
    return text;
}

} // namespace

std::optional<std::string> expandedText(Bus& bus, const FocusedObject& element, const TextReading& reading) {
    if (!reading.text || countOfEmbeddedObjects(*reading.text) == 0) return reading.text;
    if (!element.states.canBeEdited()) return withoutEmbeddedObjects(*reading.text);
    if (!isBrowser(element.toolkit)) return std::nullopt;
    return expanded(bus, element.object, *reading.text, element.toolkit, 0);
}

std::optional<std::string> expandedSelection(Bus& bus, const FocusedObject& element,
                                             const TextReading& reading) {
    if (isBrowser(element.toolkit) && element.states.canBeEdited())
        return selected(bus, element.object, reading, element.toolkit, 0);
    auto selection = selectedText(bus, element.object, reading, element.toolkit);
    if (!selection || countOfEmbeddedObjects(*selection) > 0) return std::nullopt;
    if (element.role == Role::paragraph && !selection->empty() && !selectionStaysIn(bus, element.object))
        return std::nullopt;
    return selection;
}

} // namespace platform::at_spi
