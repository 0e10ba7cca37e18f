#include "platform/linux/x11/keyboard/keyboards.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/extensions/XInput2.h>

#include <span>
#include <string_view>
#include <utility>

namespace platform::x11 {
namespace {

// The keyboards attached to a cursor: those that only pass on synthetic keys, or all the others.
std::vector<unsigned> keyboards(bool synthetic) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr || !xInputOpcode()) return {};
    int count = 0;
    const Handle<XIDeviceInfo, XIFreeDeviceInfo> devices(
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

std::optional<int> xInputOpcode() {
    static const std::optional<int> opcode = []() -> std::optional<int> {
        XlibConnection* connection = XlibConnection::shared();
        if (connection == nullptr) return std::nullopt;
        int code = 0, ignored = 0;
        // From 2.2 on, raw events reach their watchers while another program has grabbed the keyboard.
        int major = 2, minor = 2;
        if (XQueryExtension(connection->display(), "XInputExtension", &code, &ignored, &ignored) == False ||
            XIQueryVersion(connection->display(), &major, &minor) != Success ||
            std::pair(major, minor) < std::pair(2, 2))
            return std::nullopt;
        return code;
    }();
    return opcode;
}

unsigned syntheticKeyboard() {
    // The server makes it with the core keyboard and never removes it.
    static const unsigned keyboard = [] {
        const auto found = keyboards(true);
        return found.empty() ? coreKeyboard : found.front();
    }();
    return keyboard;
}

std::vector<unsigned> realKeyboards() { return keyboards(false); }

} // namespace platform::x11
