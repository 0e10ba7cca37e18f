#include "platform/linux/typing/place_events.h"

#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/put_back.h"

#include <utility>

namespace platform::typing {
namespace {

Happened seenFrom(const at_spi::Object& here, std::string_view text,
                  const std::vector<at_spi::Event>& events) {
    using Kind = at_spi::Event::Kind;
    Happened happened;
    happened.anything = !events.empty();
    for (const at_spi::Event& event : at_spi::withoutPutBack(events, text)) {
        if (event.source != here) {
            happened.focusElsewhere |= event.kind == Kind::focusGained;
        } else if (event.kind == Kind::textInserted || event.kind == Kind::textRemoved) {
            const bool isFirst = !std::exchange(happened.toText, true);
            happened.removed.reset();
            if (isFirst && event.kind == Kind::textRemoved) happened.removed = {event.position, event.length};
        } else {
            happened.toSelection |= event.kind == Kind::caretMoved || event.kind == Kind::selectionChanged;
        }
    }
    return happened;
}

} // namespace

PlaceEvents::PlaceEvents(const AXUIElementRef& element) {
    at_spi::Bus* bus = at_spi::AccessibilityBus::shared().bus();
    const at_spi::Object* object = objectOf(element);
    if (bus == nullptr || object == nullptr) return;
    here_ = *object;
    events_ = std::make_unique<at_spi::Events>(*bus, object->program);
}

std::optional<Happened> PlaceEvents::sinceLast() {
    if (!events_) return Happened();
    at_spi::Bus* bus = at_spi::AccessibilityBus::shared().bus();
    const auto events = bus != nullptr ? events_->take(*bus) : std::nullopt;
    return events ? std::optional(seenFrom(*here_, text_, *events)) : std::nullopt;
}

Happened PlaceEvents::sinceLastUnasked() {
    at_spi::Bus* bus = at_spi::AccessibilityBus::shared().bus();
    if (!events_ || bus == nullptr) return {};
    return seenFrom(*here_, text_, events_->takeSent(*bus));
}

std::function<Happened()> PlaceEvents::sinceLastByThen() const {
    if (!events_) return [] { return Happened(); };
    return
        [here = *here_, text = text_, take = events_->takeLater()] { return seenFrom(here, text, take()); };
}

} // namespace platform::typing
