#include "platform/process_info.h"

#include "platform/linux/base/handle.h"

#include <glib.h>

namespace platform {
namespace {

// The host asks for the release of the system services it needs; this desktop offers all of that release,
// whatever the number of the distribution is.
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
    const Handle<char, g_free> name(g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME));
    return name ? name.get() : "Linux";
}

} // namespace platform
