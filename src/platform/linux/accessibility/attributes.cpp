#include "platform/linux/accessibility/attributes.h"

#include "platform/linux/at_spi/embedded_objects.h"
#include "platform/linux/at_spi/session.h"
#include "platform/linux/at_spi/text.h"

namespace platform::ax {
namespace {

using namespace std::chrono_literals;
using at_spi::Bus;
using at_spi::FocusedObject;
using at_spi::Role;
using at_spi::State;

// How long the role and states that were read last are used again. A capture reads several attributes one
// after the other, and need not read these each time. Not for longer: "show the password" turns a password
// entry into a plain one and back, and it stays the same object (GTK 3).
constexpr auto mostAge = 200ms;

// Reads role and states again. False when the program does not reply.
bool lookAgain(Bus& bus, AXUIElement::Accessible& accessible) {
    FocusedObject& seen = accessible.seen;
    std::vector<at_spi::Call> calls;
    calls.push_back(roleOf(seen.object));
    calls.push_back(stateOf(seen.object));
    calls.push_back(interfacesOf(seen.object));
    const bool first = accessible.seenAt == decltype(accessible.seenAt){};
    if (first) calls.push_back(at_spi::toolkitOf(seen.object.program));
    const auto replies = bus.call(std::move(calls));
    const auto role = roleIn(replies[0]);
    if (!role || !replies[1].value || !replies[2].value) return false;
    seen.role = *role;
    seen.states = statesIn(replies[1]);
    seen.text = hasText(replies[2]);
    if (first) seen.toolkit = toolkitIn(replies[3]).value_or(at_spi::Toolkit::other);
    accessible.seenAt = std::chrono::steady_clock::now();
    return true;
}

bool isFresh(const AXUIElement::Accessible& accessible) {
    return std::chrono::steady_clock::now() - accessible.seenAt < mostAge;
}

bool isKnown(Bus& bus, AXUIElement::Accessible& accessible) {
    return isFresh(accessible) || lookAgain(bus, accessible);
}

// Whether it is a password field. Always reads the role again.
bool isSecure(Bus& bus, AXUIElement::Accessible& accessible) {
    if (!isFresh(accessible))
        lookAgain(bus, accessible);
    else if (const auto role = roleIn(bus.call(roleOf(accessible.seen.object))))
        accessible.seen.role = *role;
    return accessible.seen.role == Role::passwordText;
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

std::optional<AXAttributeValue> textAttribute(Bus& bus, const FocusedObject& seen, std::string_view name) {
    if (!seen.text || seen.role == Role::passwordText) return std::nullopt;
    if (name == "AXValue") return expandedText(bus, seen);
    if (name == "AXSelectedText") return expandedSelection(bus, seen);
    // In a terminal, text that is typed does not replace the selection.
    if (seen.role == Role::terminal) return std::nullopt;
    const auto range = selectedRangeOf(bus, seen.object, seen.toolkit);
    return range ? std::optional<AXAttributeValue>(AXValue{AXValueType::cfRange, *range}) : std::nullopt;
}

} // namespace

std::optional<AXAttributeValue> attribute(AXUIElement::Accessible& accessible, std::string_view name) {
    Bus* bus = at_spi::Session::shared().accessibilityBus();
    if (bus == nullptr) return std::nullopt;
    const Bus::Budget budget(*bus, queryDeadline);
    const FocusedObject& seen = accessible.seen;
    if (name == "AXTitle") return stringPropertyIn(bus->call(nameOf(seen.object)));
    if (name == "AXSubrole")
        return isSecure(*bus, accessible) ? std::optional<AXAttributeValue>("AXSecureTextField")
                                          : std::nullopt;
    if (name == "AXRole") return isKnown(*bus, accessible) ? role(*bus, seen) : std::nullopt;
    if (name == "AXEditable")
        return isKnown(*bus, accessible) ? std::optional<AXAttributeValue>(isEditableField(seen))
                                         : std::nullopt;
    if (name == "AXValue" || name == "AXSelectedText" || name == "AXSelectedTextRange")
        return isKnown(*bus, accessible) ? textAttribute(*bus, seen, name) : std::nullopt;
    return std::nullopt;
}

} // namespace platform::ax
