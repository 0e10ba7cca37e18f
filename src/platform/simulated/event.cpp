#include "platform/event.h"

#include "platform/simulated/world.h"

namespace platform {

using simulated::World;

std::optional<EventSource> CGEventSourceCreate(CGEventSourceStateID state) {
    if (!World::current().hasEventSource) return std::nullopt;
    return EventSource{state};
}

std::optional<KeyboardEvent> CGEventCreateKeyboardEvent(const std::optional<EventSource>&, CGKeyCode keyCode,
                                                        bool keyDown) {
    const World& world = World::current();
    if (world.refusesKeyEvent && world.refusesKeyEvent(keyCode, keyDown)) return std::nullopt;
    return KeyboardEvent{keyCode, keyDown, 0};
}

void CGEventSetFlags(KeyboardEvent& event, CGEventFlags flags) { event.flags = flags; }

void CGEventPost(CGEventTapLocation, const KeyboardEvent& event) {
    World& world = World::current();
    world.postedEvents.push_back(event);
    if (event.keyDown) world.postKeystroke({event.keyCode, event.flags});
}

CGEventFlags Event::modifierFlags() { return World::current().heldModifiers; }

} // namespace platform
