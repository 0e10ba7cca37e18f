#include "platform/linux/x11/keyboard/keyboards.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/extensions/XInput2.h>

#include <span>
#include <string_view>
#include <utility>

namespace platform::x11 {
namespace {

// Those that the server lists under a number of XInput's, such as XIAllDevices.
class Devices {
public:
    explicit Devices(int which) {
        XlibConnection* connection = XlibConnection::shared();
        if (connection == nullptr || !xInputOpcode()) return;
        first_.reset(XIQueryDevice(connection->display(), which, &count_));
    }
    std::span<const XIDeviceInfo> all() const {
        return {first_.get(), first_ ? static_cast<std::size_t>(count_) : 0};
    }

private:
    int count_ = 0;
    Handle<XIDeviceInfo, XIFreeDeviceInfo> first_;
};

// The keyboards attached to a cursor: those that only pass on synthetic keys, or all the others.
std::vector<unsigned> keyboards(bool synthetic) {
    const Devices devices(XIAllDevices);
    std::vector<unsigned> found;
    for (const XIDeviceInfo& device : devices.all()) {
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

unsigned lastUsedKeyboard() {
    const Devices devices(XIAllMasterDevices);
    for (const XIDeviceInfo& device : devices.all()) {
        if (device.use != XIMasterKeyboard) continue;
        // The core keyboard is a copy of the one that its latest key came from.
        for (const XIAnyClassInfo* part :
             std::span(device.classes, static_cast<std::size_t>(device.num_classes)))
            if (part->type == XIKeyClass) return static_cast<unsigned>(part->sourceid);
    }
    return coreKeyboard;
}

std::vector<unsigned> realKeyboards() { return keyboards(false); }

} // namespace platform::x11
