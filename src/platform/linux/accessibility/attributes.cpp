#include "platform/linux/accessibility/attributes.h"

#include "platform/linux/accessibility/late_selection.h"
#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/embedded_objects.h"
#include "platform/linux/at_spi/text_quirks.h"

#include <utility>

namespace platform::ax {
namespace {

using at_spi::Bus;
using at_spi::FocusedObject;
using at_spi::Role;
using at_spi::State;

bool isFresh(AXUIElement::Accessible::Time time) {
    return std::chrono::steady_clock::now() - time < at_spi::mostAge;
}

// Reads role, states and interfaces, unless they were read just now. False when the program does not reply.
bool look(Bus& bus, AXUIElement::Accessible& accessible) {
    if (isFresh(accessible.seenAt)) return true;
    std::vector<at_spi::Call> calls;
    addLook(accessible.seen.object, calls);
    const auto replies = bus.call(std::move(calls));
    for (const at_spi::Reply& reply : replies)
        if (!reply.value) return false;
    accessible.seen = seenIn(replies.data(), accessible.seen.object, accessible.seen.toolkit);
    accessible.seenAt = std::chrono::steady_clock::now();
    return true;
}

const at_spi::TextReading& text(Bus& bus, AXUIElement::Accessible& accessible) {
    if (!isFresh(accessible.textAt)) {
        const FocusedObject& seen = accessible.seen;
        accessible.text = settled(bus, seen, readText(bus, seen.object, seen.toolkit, seen.selection));
        accessible.textAt = std::chrono::steady_clock::now();
        accessible.selected.reset();
    }
    return accessible.text;
}

// In the text that was read last. In a browser's paragraphs it takes several round trips.
const std::optional<std::string>& selection(Bus& bus, AXUIElement::Accessible& accessible) {
    if (!accessible.selected) accessible.selected = expandedSelection(bus, accessible.seen, accessible.text);
    return *accessible.selected;
}

std::optional<std::string> title(Bus& bus, AXUIElement::Accessible& accessible) {
    const auto title = std::exchange(accessible.title, nullptr);
    if (!title || !isFresh(accessible.titleAskedAt))
        return stringPropertyIn(bus.call(nameOf(accessible.seen.object)));
    bus.wait({title});
    return stringPropertyIn(title->reply);
}

// GTK 4.8 does not tell an entry that hides its text from others, but gives dots in place of the text.
bool hidesItsText(Bus& bus, AXUIElement::Accessible& accessible) {
    const FocusedObject& seen = accessible.seen;
    if (seen.toolkit != at_spi::Toolkit::gtk4 || seen.role != Role::text || seen.states.has(State::multiLine))
        return false;
    return at_spi::isHidden(text(bus, accessible).text.value_or(""));
}

bool isSecure(Bus& bus, AXUIElement::Accessible& accessible) {
    return accessible.seen.role == Role::passwordText || hidesItsText(bus, accessible);
}

// Browsers mark a search field in its object attributes; GTK 3 and Qt 5 do not mark it at all.
bool isForSearch(Bus& bus, const at_spi::Object& object) {
    const auto attributes = bus.call(attributesOf(object));
    return attributeIn(attributes, "text-input-type") == "search" ||
           attributeIn(attributes, "xml-roles") == "searchbox";
}

std::optional<std::string> role(Bus& bus, const FocusedObject& seen) {
    switch (seen.role) {
    case Role::comboBox:
        return "AXComboBox";
    case Role::documentWeb:
        return "AXWebArea";
    case Role::passwordText:
        return "AXTextField";
    case Role::entry:
        if (isForSearch(bus, seen.object)) return "AXSearchField";
        [[fallthrough]];
    case Role::text:
        return seen.states.has(State::multiLine) ? "AXTextArea" : "AXTextField";
    default:
        return stringIn(bus.call(roleNameOf(seen.object)));
    }
}

// In LibreOffice Writer the focused element is one paragraph of the document. It is not a field of its own:
// there "select all" selects the whole document, which must not be replaced with a rewritten paragraph.
bool isEditableField(const FocusedObject& seen) {
    return seen.states.canBeEdited() && seen.role != Role::paragraph;
}

std::optional<AXAttributeValue> textAttribute(Bus& bus, AXUIElement::Accessible& accessible,
                                              std::string_view name) {
    const FocusedObject& seen = accessible.seen;
    if (!seen.text || isSecure(bus, accessible)) return std::nullopt;
    const at_spi::TextReading& reading = text(bus, accessible);
    if (name == "AXSelectedText") return selection(bus, accessible);
    if (name == "AXValue") {
        // A field is replaced as a whole only if nothing in it is selected.
        const bool isSelected = reading.hasSelection == true && isEditableField(seen);
        if (isSelected && !selection(bus, accessible)) return std::nullopt;
        return expandedText(bus, seen, reading);
    }
    // In a terminal, text that is typed does not replace the selection.
    if (!reading.range || seen.role == Role::terminal) return std::nullopt;
    return AXValue{AXValueType::cfRange, *reading.range};
}

} // namespace

std::optional<AXAttributeValue> attribute(AXUIElement::Accessible& accessible, std::string_view name) {
    Bus* bus = at_spi::AccessibilityBus::shared().bus();
    if (bus == nullptr) return std::nullopt;
    const Bus::Budget budget(*bus, queryDeadline);
    if (name == "AXTitle") return title(*bus, accessible);
    if (!look(*bus, accessible)) return std::nullopt;
    const FocusedObject& seen = accessible.seen;
    if (name == "AXRole") return role(*bus, seen);
    if (name == "AXEditable") return isEditableField(seen);
    if (name == "AXValue" || name == "AXSelectedText" || name == "AXSelectedTextRange")
        return textAttribute(*bus, accessible, name);
    if (name == "AXSubrole" && isSecure(*bus, accessible)) return "AXSecureTextField";
    return std::nullopt;
}

} // namespace platform::ax
