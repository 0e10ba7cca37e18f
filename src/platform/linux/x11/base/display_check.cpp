#include "platform/linux/x11/base/display_check.h"

#include "platform/linux/base/environment.h"
#include "platform/linux/base/handle.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <span>
#include <string_view>

namespace platform {
namespace {

constexpr const char* waylandSession =
    "this is a Wayland session, which lets no program read or type into another; log out, and choose an X11 "
    "(Xorg) session on the login screen.";

// Xwayland has had the extension since version 23.1; before, only its input devices tell.
bool isXwayland(Display* display) {
    int ignored = 0;
    if (XQueryExtension(display, "XWAYLAND", &ignored, &ignored, &ignored)) return true;
    if (!XQueryExtension(display, "XInputExtension", &ignored, &ignored, &ignored)) return false;
    int count = 0;
    const Handle<XIDeviceInfo, XIFreeDeviceInfo> devices(XIQueryDevice(display, XIAllDevices, &count));
    if (!devices) return false;
    const std::span all(devices.get(), static_cast<std::size_t>(count));
    return std::any_of(all.begin(), all.end(), [](const XIDeviceInfo& device) {
        return std::string_view(device.name).starts_with("xwayland-");
    });
}

} // namespace

std::optional<std::string> displayProblem() {
    const std::string name = environmentVariable("DISPLAY");
    if (name.empty()) {
        if (!environmentVariable("WAYLAND_DISPLAY").empty() ||
            environmentVariable("XDG_SESSION_TYPE") == "wayland")
            return waylandSession;
        return "there is no display; start it inside a desktop session, or set DISPLAY to the X server to "
               "use.";
    }
    // The host's own connection, which stays: a server that begins anew when its last client goes would
    // refuse the next.
    const x11::XlibConnection* connection = x11::XlibConnection::shared();
    if (connection == nullptr) {
        return "the display " + name +
               " cannot be opened; check that DISPLAY names a running X server and that you may use it "
               "(xhost, XAUTHORITY).";
    }
    if (isXwayland(connection->display())) return waylandSession;
    return std::nullopt;
}

} // namespace platform
