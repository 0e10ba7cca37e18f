#include "platform/process_info.h"

#include "platform/simulated/world.h"

#include <tuple>

namespace platform {
namespace {

auto parts(const OperatingSystemVersion& version) {
    return std::tie(version.majorVersion, version.minorVersion, version.patchVersion);
}

} // namespace

const ProcessInfo& ProcessInfo::processInfo() {
    static const ProcessInfo info;
    return info;
}

bool ProcessInfo::isOperatingSystemAtLeast(OperatingSystemVersion version) const {
    return parts(simulated::World::current().operatingSystem.version) >= parts(version);
}

std::string ProcessInfo::operatingSystemVersionString() const {
    return simulated::World::current().operatingSystem.versionString;
}

} // namespace platform
