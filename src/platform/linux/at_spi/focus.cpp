#include "platform/linux/at_spi/focus.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// More windows or focused objects than these are not looked at: no program has them, and each costs calls.
constexpr std::size_t mostWindows = 64;
constexpr std::size_t mostHits = 16;

struct WindowView {
    Object window;
    Reply focused; // the answer to `focusedWithin`
};

// The first active one of `windows`, with the focus inside it, in one round trip.
std::optional<WindowView> viewOfActive(Bus& bus, const std::vector<Object>& windows) {
    std::vector<Call> calls;
    for (const Object& window : windows) {
        calls.push_back(stateOf(window));
        calls.push_back(focusedWithin(window));
    }
    auto replies = bus.call(std::move(calls));
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (statesIn(replies[2 * i]).has(State::active))
            return WindowView{windows[i], std::move(replies[2 * i + 1])};
    return std::nullopt;
}

// Roles of what only holds other elements. Such an element may have the state FOCUSED while the focus is
// inside it (Qt 5's fillers and page tabs, LibreOffice's panel) or while the program does not show its
// elements yet (Chromium's window).
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

constexpr int rankOfField = 3;

// How likely it is that the user types into it; 0 when it cannot be the focused element.
int rank(const FocusedObject& element) {
    if (!element.states.has(State::focusable)) return 0;
    if (element.text) return element.states.canBeEdited() ? rankOfField : 2;
    return isContainer(element.role) ? 0 : 1;
}

// `seen` reads the three replies, from the one numbered `at` on.
void addCallsAbout(const Object& object, std::vector<Call>& calls) {
    calls.push_back(stateOf(object));
    calls.push_back(roleOf(object));
    calls.push_back(interfacesOf(object));
}

FocusedObject seen(Object object, const std::vector<Reply>& replies, std::size_t at,
                   const Application& program) {
    return {std::move(object), roleIn(replies[at + 1]).value_or(Role::invalid), statesIn(replies[at]),
            hasText(replies[at + 2]), program.toolkit.value_or(Toolkit::other)};
}

// Looks at each of `objects`, in one round trip.
std::vector<FocusedObject> look(Bus& bus, const std::vector<Object>& objects, Application& program) {
    std::vector<Call> calls;
    for (const Object& object : objects)
        addCallsAbout(object, calls);
    if (!program.toolkit) calls.push_back(toolkitOf(program.name));
    const auto replies = bus.call(std::move(calls));
    if (!program.toolkit) program.toolkit = toolkitIn(replies.back());
    std::vector<FocusedObject> elements;
    for (std::size_t i = 0; i < objects.size(); ++i)
        elements.push_back(seen(objects[i], replies, 3 * i, program));
    return elements;
}

std::vector<Object> windowsOf(Bus& bus, Application& program) {
    const Reply windows = bus.call(childrenOf(rootOf(program.name)));
    program.gone = windows.failure == Failure::gone;
    auto objects = objectsIn(windows);
    objects.resize(std::min(objects.size(), mostWindows));
    return objects;
}

// The field found last, if it still has the focus, in one round trip. Not for Chromium: a field of its page
// keeps the state FOCUSED while the user types into the address bar.
std::optional<FocusedObject> sameAsLast(Bus& bus, Application& program) {
    if (!program.activeWindow || !program.focusedElement || !program.toolkit ||
        program.toolkit == Toolkit::chromium)
        return std::nullopt;
    std::vector<Call> calls;
    calls.push_back(stateOf(*program.activeWindow));
    addCallsAbout(*program.focusedElement, calls);
    const auto replies = bus.call(std::move(calls));
    if (!statesIn(replies[0]).has(State::active)) return std::nullopt;
    auto element = seen(*program.focusedElement, replies, 1, program);
    if (!element.states.has(State::focused) || rank(element) < rankOfField) return std::nullopt;
    return element;
}

std::optional<FocusedObject> best(Bus& bus, std::vector<Object> objects, Application& program) {
    if (objects.empty()) return std::nullopt;
    objects.resize(std::min(objects.size(), mostHits));
    auto elements = look(bus, objects, program);
    const auto found = std::ranges::max_element(elements, {}, rank);
    if (rank(*found) > 1) return std::move(*found);
    // What is inside a focused container may belong to another process (the page in a web view), which the
    // search does not reach.
    for (const FocusedObject& element : elements)
        if (isContainer(element.role))
            if (auto inner = look(bus, walkToFocus(bus, element.object), program); !inner.empty())
                if (const auto deeper = std::ranges::max_element(inner, {}, rank); rank(*deeper) > 0)
                    return std::move(*deeper);
    return rank(*found) > 0 ? std::optional(std::move(*found)) : std::nullopt;
}

} // namespace

std::optional<FocusedObject> focusedElement(Bus& bus, Application& program) {
    if (auto same = sameAsLast(bus, program)) return same;
    std::optional<WindowView> view;
    if (program.activeWindow) view = viewOfActive(bus, {*program.activeWindow});
    if (!view) view = viewOfActive(bus, windowsOf(bus, program));
    if (view) program.activeWindow = view->window;
    // Chromium has no window in the state ACTIVE while nobody listens to its events.
    const Object top = view ? view->window : rootOf(program.name);
    const Reply focused = view ? std::move(view->focused) : bus.call(focusedWithin(top));

    // Qt 5 has no such method, and replies that the object does not exist.
    const bool mustWalk = view && focused.failure == Failure::refused;
    auto found = best(bus, mustWalk ? walkToFocus(bus, top) : objectsIn(focused), program);
    if (found) program.focusedElement = found->object;
    return found;
}

std::optional<Object> activeWindow(Bus& bus, Application& program) {
    if (program.activeWindow && statesIn(bus.call(stateOf(*program.activeWindow))).has(State::active))
        return program.activeWindow;
    const auto windows = windowsOf(bus, program);
    const auto replies = bus.call(toEach(windows, stateOf));
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (statesIn(replies[i]).has(State::active)) return program.activeWindow = windows[i];
    return std::nullopt;
}

std::optional<FocusedObject> lastFocusedElement(Bus& bus, Application& program) {
    if (!program.focusedElement) return std::nullopt;
    auto found = look(bus, {*program.focusedElement}, program).front();
    if (!found.states.has(State::showing) || rank(found) == 0) return std::nullopt;
    return found;
}

std::optional<Object> lastActiveWindow(Bus& bus, Application& program) {
    if (!program.activeWindow || !statesIn(bus.call(stateOf(*program.activeWindow))).has(State::showing))
        return std::nullopt;
    return program.activeWindow;
}

} // namespace platform::at_spi
