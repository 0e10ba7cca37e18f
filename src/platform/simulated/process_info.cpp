#include "platform/process_info.h"

#include "platform/simulated/world.h"

namespace platform {

const ProcessInfo& ProcessInfo::processInfo() {
    static const ProcessInfo info;
    return info;
}

bool ProcessInfo::isOperatingSystemAtLeast(OperatingSystemVersion version) const {
    return simulated::World::current().operatingSystem.version >= version;
}

std::string ProcessInfo::operatingSystemVersionString() const {
    return simulated::World::current().operatingSystem.versionString;
}

} // namespace platform
