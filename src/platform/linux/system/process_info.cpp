#include "platform/process_info.h"

#include <glib.h>

#include <memory>

namespace platform {
namespace {

// The release of the system services that this desktop offers, whatever the distribution's own numbers are.
constexpr OperatingSystemVersion offered{26, 0, 0};

} // namespace

const ProcessInfo& ProcessInfo::processInfo() {
    static const ProcessInfo info;
    return info;
}

bool ProcessInfo::isOperatingSystemAtLeast(OperatingSystemVersion version) const {
    return offered >= version;
}

std::string ProcessInfo::operatingSystemVersionString() const {
    const std::unique_ptr<char, decltype(&g_free)> name(g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME), g_free);
    return name ? name.get() : "Linux";
}

} // namespace platform
