#include "platform/screen.h"

#include "platform/simulated/world.h"

namespace platform {

std::optional<Screen> Screen::mainScreen() {
    const auto& screens = simulated::World::current().screens;
    if (screens.empty()) return std::nullopt;
    return Screen(screens.front());
}

} // namespace platform
