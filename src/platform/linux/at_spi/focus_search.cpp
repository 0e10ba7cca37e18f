#include "platform/linux/at_spi/focus_search.h"

#include <utility>

namespace platform::at_spi {
namespace {

// Limits of one walk. A window has far fewer controls; rows of a long table are not worth the calls.
constexpr std::size_t mostOfOneLevel = 1000;
constexpr int deepest = 60;

std::vector<States> statesOf(Bus& bus, const std::vector<Object>& objects) {
    std::vector<States> states;
    for (const Reply& reply : bus.call(toEach(objects, stateOf)))
        states.push_back(statesIn(reply));
    return states;
}

std::vector<Object> childrenOfAll(Bus& bus, const std::vector<Object>& objects) {
    std::vector<Object> children;
    for (const Reply& reply : bus.call(toEach(objects, childrenOf)))
        for (Object& child : objectsIn(reply))
            if (children.size() < mostOfOneLevel) children.push_back(std::move(child));
    return children;
}

// Whether to look for the focus among an object's children. A table makes them when it is asked for them, in
// LibreOffice Calc a thousand million cells; Writer's document says that it is such an object, too, but has
// only the paragraphs that are on the screen.
bool hasFewChildren(Bus& bus, const Object& object, States states, Toolkit toolkit) {
    return !states.has(State::managesDescendants) ||
           (toolkit == Toolkit::libreOffice && roleIn(bus.call(roleOf(object))) == Role::documentText);
}

// What an unfinished search has found, if it was for `top`.
std::optional<Reply> resultOf(Bus& bus, Application& application, const Object& top) {
    if (!application.search || application.search->top != top)
        application.search = Application::Search{top, bus.send(focusedWithin(top))};
    if (!isFinished(bus, *application.search)) return std::nullopt;
    const auto finished = std::exchange(application.search, std::nullopt);
    return std::move(finished->pending->reply);
}

} // namespace

bool isFinished(Bus& bus, const Application::Search& search) {
    bus.wait({search.pending});
    return !search.pending->isSent || search.pending->reply.failure != Failure::late;
}

std::vector<Object> searchFocus(Bus& bus, Application& application, const Object& top) {
    const Toolkit toolkit = application.toolkit.value_or(Toolkit::other);
    // GTK 4.8 has no Collection; LibreOffice Calc hangs in a search through all the cells of its sheet.
    if (toolkit == Toolkit::gtk4 || toolkit == Toolkit::libreOffice) return walkToFocus(bus, top, toolkit);
    const auto result = resultOf(bus, application, top);
    if (!result) return {};
    // Qt 5 has no Collection either, and replies that the object does not exist.
    return result->failure == Failure::refused ? walkToFocus(bus, top, toolkit) : objectsIn(*result);
}

std::vector<Object> walkToFocus(Bus& bus, const Object& top, Toolkit toolkit) {
    std::vector<Object> focused;
    std::vector<Object> level{top};
    for (int depth = 0; depth < deepest && !level.empty(); ++depth) {
        const std::vector<Object> children = childrenOfAll(bus, level);
        const std::vector<States> states = statesOf(bus, children);
        level.clear();
        for (std::size_t i = 0; i < children.size(); ++i) {
            if (!isOnScreen(states[i], toolkit)) continue;
            if (states[i].has(State::focused) && states[i].has(State::focusable)) {
                if (states[i].canBeEdited()) return {children[i]};
                focused.push_back(children[i]);
            }
            if (hasFewChildren(bus, children[i], states[i], toolkit)) level.push_back(children[i]);
        }
    }
    return focused;
}

} // namespace platform::at_spi
