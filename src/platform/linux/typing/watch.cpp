#include "platform/linux/typing/watch.h"

#include "platform/linux/accessibility/element.h"
#include "platform/linux/at_spi/session.h"
#include "platform/linux/typing/delivery.h"
#include "platform/linux/x11/base/event_listener.h"

#include <algorithm>

namespace platform {
namespace typing {
namespace {

template <typename T>
std::optional<T> attribute(const AXUIElementRef& element, std::string_view name) {
    auto value = AXUIElementCopyAttributeValue(element, name);
    auto* wanted = value ? std::get_if<T>(&*value) : nullptr;
    return wanted ? std::optional<T>(std::move(*wanted)) : std::nullopt;
}

AXUIElementRef focusedElement(pid_t process) {
    return attribute<AXUIElementRef>(AXUIElementCreateApplication(process), "AXFocusedUIElement")
        .value_or(AXUIElementRef());
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

// Null where the focused element is not on the accessibility bus.
std::unique_ptr<at_spi::Events> eventsOf(const AXUIElementRef& element) {
    at_spi::Bus* bus = at_spi::Session::shared().accessibilityBus();
    const auto* object = element ? std::get_if<AXUIElement::Accessible>(&element.get()->what) : nullptr;
    if (bus == nullptr || object == nullptr) return nullptr;
    return std::make_unique<at_spi::Events>(*bus, object->seen.object.program);
}

} // namespace

bool Place::operator==(const Place& other) const {
    return CFEqual(element, other.element) && text == other.text && selectedText == other.selectedText &&
           selection == other.selection && subrole == other.subrole;
}

} // namespace typing

namespace {

// How often a place is looked at again when something has happened beside it meanwhile.
constexpr int mostLooks = 3;

KeystrokeGuard::Watch* living = nullptr;

} // namespace

KeystrokeGuard::Watch::Watch(pid_t process, Against against) : process_(process), against_(against) {
    living = this;
    const auto element = typing::focusedElement(process);
    role_ = typing::attribute<std::string>(element, "AXRole");
    if (against == Against::anyChange) {
        input_.emplace(
            [this](x11::RawInput::Kind kind, unsigned) { inputSeen_ |= kind != x11::RawInput::Kind::keyUp; });
        events_ = typing::eventsOf(element);
        place_ = typing::placeIn(process);
    }
    window_ = x11::frontWindow();
}

KeystrokeGuard::Watch* KeystrokeGuard::Watch::current() { return living; }

void KeystrokeGuard::Watch::finish() {
    living = nullptr;
    if (keystrokes.empty()) return;
    const typing::Delivery delivery(keystrokes, role_);
    if (against_ == Against::anyChange && !placeIsUnchanged()) return;
    if (isInFront() && !inputWasSeen()) delivery.deliver(); // last, so that little time is left for a change
}

bool KeystrokeGuard::Watch::isInFront() const {
    const auto front = x11::frontWindow();
    // Openbox names no window for a moment even where the focus stays.
    if (!front || !window_) return x11::windowProcess(x11::focusedWindow()) == process_;
    return front == window_ && front->process == process_;
}

// A look asks several questions; the events tell what has changed between them.
bool KeystrokeGuard::Watch::placeIsUnchanged() {
    for (int look = 0; look < mostLooks; ++look) {
        const auto before = eventsSoFar();
        if (!before ||
            std::ranges::any_of(*before, [this](const at_spi::Event& event) { return isChange(event); }))
            return false;
        if (typing::placeIn(process_) != place_) return false;
        const auto meanwhile = eventsSoFar();
        if (!meanwhile ||
            std::ranges::any_of(*meanwhile, [this](const at_spi::Event& event) { return isHere(event); }))
            return false;
        if (meanwhile->empty()) return true;
    }
    return true;
}

// Absent when the program does not answer; none where it is not on the accessibility bus.
std::optional<std::vector<at_spi::Event>> KeystrokeGuard::Watch::eventsSoFar() {
    if (!events_) return std::vector<at_spi::Event>{};
    at_spi::Bus* bus = at_spi::Session::shared().accessibilityBus();
    return bus != nullptr ? events_->take(*bus) : std::nullopt;
}

bool KeystrokeGuard::Watch::isHere(const at_spi::Event& event) const {
    const auto* element = std::get_if<AXUIElement::Accessible>(&place_.element.get()->what);
    return element != nullptr && event.source == element->seen.object &&
           event.kind != at_spi::Event::Kind::focusGained;
}

// The place says where the caret is by now: one that has moved and come back is no change.
bool KeystrokeGuard::Watch::isChange(const at_spi::Event& event) const {
    return isHere(event) && event.kind == at_spi::Event::Kind::textChanged;
}

bool KeystrokeGuard::Watch::inputWasSeen() {
    x11::EventListener::handlePending();
    return inputSeen_;
}

KeystrokeGuard::KeystrokeGuard(pid_t process, Against against)
    : watch_(std::make_unique<Watch>(process, against)) {}

KeystrokeGuard::~KeystrokeGuard() { watch_->finish(); }

} // namespace platform
