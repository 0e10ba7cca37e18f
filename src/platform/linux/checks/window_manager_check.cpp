#include "platform/linux/checks/window_manager_check.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/properties.h"

#include <algorithm>
#include <array>

namespace platform {
namespace {

using Grade = Finding::Grade;
using x11::XlibConnection;

// What a window manager lists as supported when it can do it (Extended Window Manager Hints).
struct Ability {
    const char* hint;
    const char* otherwise; // what the writer has when it cannot
};

constexpr Ability bringToFront{"_NET_ACTIVE_WINDOW", ""};
constexpr std::array lesserAbilities{
    Ability{"_NET_WM_ACTION_MINIMIZE", "hiding takes the window off the screen and out of all lists"},
    Ability{"_NET_WM_STATE_ABOVE", "the window cannot be kept above others"},
    Ability{"_NET_WM_STATE_FULLSCREEN", "the window cannot fill the screen"},
    Ability{"_NET_CURRENT_DESKTOP", "the window stays on the workspace it was opened on"},
};

} // namespace

std::optional<std::string> runningWindowManager() {
    XlibConnection& connection = *XlibConnection::shared();
    const auto check = connection.values(connection.root(), connection.atom("_NET_SUPPORTING_WM_CHECK"));
    if (check.empty()) return std::nullopt;
    // One that was killed leaves the property behind, not the window.
    const auto own = connection.values(check.front(), connection.atom("_NET_SUPPORTING_WM_CHECK"));
    if (own.empty() || own.front() != check.front()) return std::nullopt;
    return x11::windowTitle(check.front()).value_or("one without a name");
}

Finding checkWindowManager() {
    XlibConnection& connection = *XlibConnection::shared();
    const std::string name = "window-manager";
    const auto running = runningWindowManager();
    if (!running)
        return {name, Grade::missing, "none",
                "Programs cannot be brought to the front: a rewrite waits on the pasteboard.",
                "Start one, such as xfwm4, metacity, openbox or i3."};
    const auto hints = connection.values(connection.root(), connection.atom("_NET_SUPPORTED"));
    const auto has = [&](const Ability& ability) {
        return std::ranges::find(hints, connection.atom(ability.hint)) != hints.end();
    };
    if (!has(bringToFront))
        return {name, Grade::missing, *running,
                "It brings no program to the front when asked to: a rewrite waits on the pasteboard.",
                "Use another one, such as xfwm4, metacity, openbox or i3."};
    std::string lacks;
    for (const auto& ability : lesserAbilities)
        if (!has(ability)) lacks += (lacks.empty() ? "With it, " : "; ") + std::string(ability.otherwise);
    if (lacks.empty()) return {name, Grade::good, *running, "", ""};
    return {name, Grade::degraded, *running, lacks + ".",
            "Nothing needs to be done; xfwm4, metacity and openbox can do this."};
}

} // namespace platform
