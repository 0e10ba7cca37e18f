#include "platform/linux/x11/keyboard/keyboards.h"

#include "platform/linux/x11/base/connection.h"

#include <X11/extensions/XInput2.h>

#include <memory>
#include <span>
#include <string_view>

namespace platform::x11 {
namespace {

using FreeDevices = decltype([](XIDeviceInfo* devices) { XIFreeDeviceInfo(devices); });

bool hasXInput(Display* display) {
    static const bool has = [display] {
        int major = 2;
        int minor = 0;
        return XIQueryVersion(display, &major, &minor) == Success;
    }();
    return has;
}

// The keyboards attached to a desktop's cursor, those that only pass synthetic keys on or all others.
std::vector<unsigned> keyboards(bool synthetic) {
    Connection* connection = Connection::shared();
    if (connection == nullptr || !hasXInput(connection->display())) return {};
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, FreeDevices> devices(
        XIQueryDevice(connection->display(), XIAllDevices, &count));
    if (!devices) return {};
    std::vector<unsigned> found;
    for (const XIDeviceInfo& device : std::span(devices.get(), static_cast<std::size_t>(count))) {
        const bool passesOn = std::string_view(device.name).ends_with("XTEST keyboard");
        if (device.use == XISlaveKeyboard && passesOn == synthetic)
            found.push_back(static_cast<unsigned>(device.deviceid));
    }
    return found;
}

} // namespace

unsigned syntheticKeyboard() {
    // The server makes it with the core keyboard and never takes it away.
    static const unsigned keyboard = [] {
        const auto found = keyboards(true);
        return found.empty() ? coreKeyboard : found.front();
    }();
    return keyboard;
}

std::vector<unsigned> realKeyboards() { return keyboards(false); }

} // namespace platform::x11
