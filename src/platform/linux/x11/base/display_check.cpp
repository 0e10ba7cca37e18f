#include "platform/linux/x11/base/display_check.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

namespace platform {
namespace {

using OpenDisplay = std::unique_ptr<Display, decltype(&XCloseDisplay)>;

constexpr const char* waylandSession =
    "this is a Wayland session, which lets no program read or type into another; log out, and choose an X11 "
    "(Xorg) session on the login screen.";

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// Servers older than the extension (before 23.1) still name their input devices after themselves.
bool isXwayland(Display* display) {
    int ignored = 0;
    if (XQueryExtension(display, "XWAYLAND", &ignored, &ignored, &ignored)) return true;
    if (!XQueryExtension(display, "XInputExtension", &ignored, &ignored, &ignored)) return false;
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, decltype(&XIFreeDeviceInfo)> devices{
        XIQueryDevice(display, XIAllDevices, &count), XIFreeDeviceInfo};
    if (!devices) return false;
    const std::span all(devices.get(), static_cast<std::size_t>(count));
    return std::any_of(all.begin(), all.end(), [](const XIDeviceInfo& device) {
        return std::string_view(device.name).starts_with("xwayland-");
    });
}

} // namespace

std::optional<std::string> displayProblem() {
    const std::string name(variable("DISPLAY"));
    if (name.empty()) {
        if (!variable("WAYLAND_DISPLAY").empty() || variable("XDG_SESSION_TYPE") == "wayland")
            return waylandSession;
        return "there is no display; start it inside a desktop session, or set DISPLAY to the X server to "
               "use.";
    }
    const OpenDisplay display{XOpenDisplay(nullptr), XCloseDisplay};
    if (!display) {
        return "the display " + name +
               " cannot be opened; check that DISPLAY names a running X server and that you may use it "
               "(xhost, XAUTHORITY).";
    }
    if (isXwayland(display.get())) return waylandSession;
    return std::nullopt;
}

} // namespace platform
