#include "platform/linux/at_spi/focus.h"

#include <algorithm>

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

} // namespace

std::vector<Object> walkToFocus(Bus& bus, const Object& top) {
    std::vector<Object> focused;
    std::vector<Object> level{top};
    for (int depth = 0; depth < deepest && !level.empty(); ++depth) {
        const std::vector<Object> children = childrenOfAll(bus, level);
        const std::vector<States> states = statesOf(bus, children);
        level.clear();
        for (std::size_t i = 0; i < children.size(); ++i) {
            if (!states[i].has(State::showing)) continue;
            if (states[i].has(State::focused) && states[i].has(State::focusable)) {
                if (states[i].canBeEdited()) return {children[i]};
                focused.push_back(children[i]);
            }
            if (!states[i].has(State::managesDescendants)) level.push_back(children[i]);
        }
    }
    return focused;
}

} // namespace platform::at_spi
