#include "platform/simulated/world.h"
#include "platform/url.h"

namespace platform {

std::optional<std::string> URL::setExcludedFromBackup(bool excluded) const {
    simulated::World& world = simulated::World::current();
    if (world.backupFailure) return world.backupFailure;
    if (excluded)
        world.excludedFromBackup.insert(path_);
    else
        world.excludedFromBackup.erase(path_);
    return std::nullopt;
}

} // namespace platform
