#include "platform/linux/at_spi/windows.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// More windows than these are not looked at: no program has them, and each costs a call.
constexpr std::size_t mostWindows = 64;
// How deep below its window an object is looked for: the pages of web applications go 40 deep.
constexpr int deepest = 100;

} // namespace

std::vector<Object> windowsOf(Bus& bus, Application& application) {
    std::vector<Call> calls;
    calls.push_back(childrenOf(rootOf(application.name)));
    if (!application.toolkit) {
        calls.push_back(toolkitOf(application.name));
        calls.push_back(nameOf(rootOf(application.name)));
    }
    const auto replies = bus.call(std::move(calls));
    application.gone = replies[0].failure == Failure::gone;
    if (!application.toolkit) application.toolkit = toolkitIn(replies[1], replies[2]);
    auto windows = objectsIn(replies[0]);
    windows.resize(std::min(windows.size(), mostWindows));
    return windows;
}

std::optional<Object> activeAmong(Bus& bus, const std::vector<Object>& windows) {
    const auto replies = bus.call(toEach(windows, stateOf));
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (statesIn(replies[i]).has(State::active)) return windows[i];
    return std::nullopt;
}

std::optional<Object> activeWindow(Bus& bus, Application& application) {
    if (application.activeWindow && activeAmong(bus, {*application.activeWindow}))
        return application.activeWindow;
    auto active = activeAmong(bus, windowsOf(bus, application));
    if (active) noteActive(application, *active);
    return active;
}

void noteActive(Application& application, const Object& window) {
    application.activeWindow = window;
    application.activeAt = std::chrono::steady_clock::now();
}

std::optional<Object> activeWindowJustSeen(const Application& application) {
    const bool isFresh = std::chrono::steady_clock::now() - application.activeAt < mostAge;
    return isFresh ? application.activeWindow : std::nullopt;
}

std::optional<Object> lastActiveWindow(Bus& bus, Application& application) {
    const auto& window = application.activeWindow;
    return window && statesIn(bus.call(stateOf(*window))).has(State::showing) ? window : std::nullopt;
}

bool isInside(Bus& bus, const Object& object, const Object& window, const std::vector<Object>& windows) {
    if (windows.size() == 1) return true;
    Object outer = object;
    for (int depth = 0; depth < deepest; ++depth) {
        if (std::ranges::find(windows, outer) != windows.end()) return outer == window;
        auto parent = objectPropertyIn(bus.call(property(outer, interfaces::accessible, "Parent")));
        if (!parent) return false;
        outer = std::move(*parent);
    }
    return false;
}

} // namespace platform::at_spi
