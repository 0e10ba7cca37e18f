#include "platform/linux/typing/place.h"

#include "platform/linux/accessibility/element.h"
#include "platform/linux/at_spi/accessibility_bus.h"

#include <string_view>
#include <utility>

namespace platform::typing {
namespace {

template <typename T>
std::optional<T> attribute(const AXUIElementRef& element, std::string_view name) {
    auto value = AXUIElementCopyAttributeValue(element, name);
    auto* wanted = value ? std::get_if<T>(&*value) : nullptr;
    return wanted ? std::optional<T>(std::move(*wanted)) : std::nullopt;
}

// Null for an element that is not on the accessibility bus.
const AXUIElement::Accessible* accessibleOf(const AXUIElementRef& element) {
    return element ? std::get_if<AXUIElement::Accessible>(&element.get()->what) : nullptr;
}

} // namespace

bool Place::operator==(const Place& other) const {
    return CFEqual(element, other.element) && text == other.text && selectedText == other.selectedText &&
           selection == other.selection && subrole == other.subrole;
}

Place placeIn(pid_t process) {
    Place place;
    place.element = focusedElement(process);
    const auto& element = place.element;
    place.text = attribute<std::string>(element, "AXValue");
    place.selectedText = attribute<std::string>(element, "AXSelectedText");
    if (const auto range = attribute<AXValue>(element, "AXSelectedTextRange"))
        place.selection = AXValueGetValue(*range, AXValueType::cfRange);
    place.subrole = attribute<std::string>(element, "AXSubrole"); // last: it tells a password field
    return place;
}

AXUIElementRef focusedElement(pid_t process) {
    return attribute<AXUIElementRef>(AXUIElementCreateApplication(process), "AXFocusedUIElement")
        .value_or(AXUIElementRef());
}

std::optional<std::string> roleOf(const AXUIElementRef& element) {
    return attribute<std::string>(element, "AXRole");
}

std::optional<bool> hasFocusSoon(const AXUIElementRef& element, at_spi::Milliseconds time) {
    at_spi::Bus* bus = at_spi::AccessibilityBus::shared().bus();
    const at_spi::Object* object = objectOf(element);
    if (bus == nullptr || object == nullptr) return std::nullopt;
    const at_spi::Reply reply = bus->call(at_spi::stateOf(*object), time);
    if (!reply.value) return std::nullopt;
    return at_spi::statesIn(reply).has(at_spi::State::focused);
}

std::optional<std::string> selectedTextSoon(const AXUIElementRef& element, at_spi::Milliseconds time) {
    at_spi::Bus* bus = at_spi::AccessibilityBus::shared().bus();
    if (bus == nullptr) return std::nullopt;
    const at_spi::Bus::Budget budget(*bus, time);
    return attribute<std::string>(element, "AXSelectedText");
}

bool tellsSelectionLate(const AXUIElementRef& element) {
    const auto* accessible = accessibleOf(element);
    return accessible != nullptr && at_spi::tellsSelectionLate(accessible->seen.toolkit);
}

const at_spi::Object* objectOf(const AXUIElementRef& element) {
    const auto* accessible = accessibleOf(element);
    return accessible != nullptr ? &accessible->seen.object : nullptr;
}

} // namespace platform::typing
