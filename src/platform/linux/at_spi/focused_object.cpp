#include "platform/linux/at_spi/focused_object.h"

namespace platform::at_spi {

// Such an element may have the state FOCUSED while the focus is inside it (Qt 5's fillers and page tabs,
// LibreOffice's panel) or while the program does not show its elements yet (Chromium's window).
bool isContainer(Role role) {
    switch (role) {
    case Role::invalid:
    case Role::filler:
    case Role::frame:
    case Role::pageTab:
    case Role::pageTabList:
    case Role::panel:
    case Role::rootPane:
    case Role::scrollPane:
    case Role::unknown:
    case Role::window:
    case Role::application:
    case Role::documentFrame:
    case Role::documentWeb:
        return true;
    default:
        return false;
    }
}

bool isOnScreen(States states, Toolkit toolkit) {
    // GTK 4.8 gives the state SHOWING to windows only.
    return states.has(toolkit == Toolkit::gtk4 ? State::visible : State::showing);
}

Rank rankOf(const FocusedObject& element) {
    if (!element.states.has(State::focusable)) return Rank::none;
    if (element.text) return element.states.canBeEdited() ? Rank::field : Rank::text;
    return isContainer(element.role) ? Rank::none : Rank::control;
}

std::vector<FocusedObject> look(Bus& bus, const std::vector<Object>& objects, Toolkit toolkit) {
    std::vector<Call> calls;
    for (const Object& object : objects)
        addLook(object, calls);
    const auto replies = bus.call(std::move(calls));
    std::vector<FocusedObject> elements;
    for (std::size_t i = 0; i < objects.size(); ++i)
        elements.push_back(seenIn(&replies[3 * i], objects[i], toolkit));
    return elements;
}

FocusedObject look(Bus& bus, const Object& object, Toolkit toolkit) {
    return std::move(look(bus, std::vector{object}, toolkit).front());
}

void addLook(const Object& object, std::vector<Call>& calls) {
    calls.push_back(stateOf(object));
    calls.push_back(roleOf(object));
    calls.push_back(interfacesOf(object));
}

FocusedObject seenIn(const Reply* replies, Object object, Toolkit toolkit) {
    return {std::move(object), roleIn(replies[1]).value_or(Role::invalid), statesIn(replies[0]),
            hasText(replies[2]), toolkit};
}

} // namespace platform::at_spi
