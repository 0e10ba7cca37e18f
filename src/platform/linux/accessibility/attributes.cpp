#include "platform/linux/accessibility/element.h"
#include "platform/linux/at_spi/rich_text.h"
#include "platform/linux/at_spi/session.h"
#include "platform/linux/at_spi/text.h"

namespace platform::ax {
namespace {

using namespace std::chrono_literals;
using at_spi::Bus;
using at_spi::FocusedObject;
using at_spi::Role;
using at_spi::State;

// How long what was seen of an element counts. Not for its life: "show the password" turns a password entry
// into a plain one and back, under the same handle (GTK 3). A moment's trust saves one question in every
// read of a capture, which starts with finding the element or with its subrole, and both look at it.
constexpr auto seenCounts = 200ms;

// Looks at the element again. False when it does not answer.
bool lookAgain(Bus& bus, AXUIElement::Accessible& accessible) {
    FocusedObject& seen = accessible.seen;
    std::vector<at_spi::Question> questions;
    questions.push_back(roleOf(seen.object));
    questions.push_back(stateOf(seen.object));
    questions.push_back(interfacesOf(seen.object));
    const bool first = accessible.seenAt == decltype(accessible.seenAt){};
    if (first) questions.push_back(at_spi::toolkitOf(seen.object.program));
    const auto answers = bus.ask(std::move(questions));
    const auto role = roleIn(answers[0]);
    if (!role || !answers[1].value || !answers[2].value) return false;
    seen.role = *role;
    seen.states = statesIn(answers[1]);
    seen.text = hasText(answers[2]);
    if (first) seen.toolkit = toolkitIn(answers[3]).value_or(at_spi::Toolkit::other);
    accessible.seenAt = std::chrono::steady_clock::now();
    return true;
}

bool isFresh(const AXUIElement::Accessible& accessible) {
    return std::chrono::steady_clock::now() - accessible.seenAt < seenCounts;
}

bool isKnown(Bus& bus, AXUIElement::Accessible& accessible) {
    return isFresh(accessible) || lookAgain(bus, accessible);
}

// Whether it is a password field now, whatever was seen before.
bool isSecure(Bus& bus, AXUIElement::Accessible& accessible) {
    if (!isFresh(accessible))
        lookAgain(bus, accessible);
    else if (const auto role = roleIn(bus.ask(roleOf(accessible.seen.object))))
        accessible.seen.role = *role;
    return accessible.seen.role == Role::passwordText;
}

// Browsers tell a search field in its attributes only; GTK 3 and Qt do not tell at all.
bool isForSearch(Bus& bus, const at_spi::Object& object) {
    const auto attributes = bus.ask(attributesOf(object));
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
        return stringIn(bus.ask(roleNameOf(seen.object)));
    }
}

// LibreOffice's focused element is one paragraph of the document. It is no field of its own: what "select
// all" selects there is the whole document, and must not be replaced with what was made of the paragraph.
bool isEditableField(const FocusedObject& seen) {
    return seen.states.canBeEdited() && seen.role != Role::paragraph;
}

std::optional<AXAttributeValue> textAttribute(Bus& bus, const FocusedObject& seen, std::string_view name) {
    if (!seen.text || seen.role == Role::passwordText) return std::nullopt;
    if (name == "AXValue") return wholeTextOf(bus, seen);
    if (name == "AXSelectedText") return wholeSelectedTextOf(bus, seen);
    // What is typed into a terminal does not replace what is selected there.
    if (seen.role == Role::terminal) return std::nullopt;
    const auto range = selectedRangeOf(bus, seen.object, seen.toolkit);
    return range ? std::optional<AXAttributeValue>(AXValue{AXValueType::cfRange, *range}) : std::nullopt;
}

} // namespace

std::optional<AXAttributeValue> attribute(AXUIElement::Accessible& accessible, std::string_view name) {
    Bus* bus = at_spi::Session::shared().accessibilityBus();
    if (bus == nullptr) return std::nullopt;
    const Bus::Budget budget(*bus, wholeQuery);
    const FocusedObject& seen = accessible.seen;
    if (name == "AXTitle") return stringPropertyIn(bus->ask(nameOf(seen.object)));
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
