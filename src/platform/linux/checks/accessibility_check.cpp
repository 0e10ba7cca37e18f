#include "platform/linux/checks/accessibility_check.h"

#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/session_bus.h"

namespace platform {
namespace {

using namespace std::chrono_literals;
using Grade = Finding::Grade;

constexpr const char* withoutIt =
    "The host cannot read the text of other programs: a capture brings what was copied before, and a rewrite "
    "waits on the pasteboard.";

} // namespace

Finding checkSessionBus() {
    const std::string name = "session-bus";
    const std::string address = at_spi::sessionBusAddress();
    if (!address.empty() && at_spi::Bus::connect(address, 5s)) return {name, Grade::good, "answers", "", ""};
    return {name, Grade::missing, address.empty() ? "none" : "does not answer", withoutIt,
            "Log in to a desktop session, or start the host with dbus-run-session."};
}

Finding checkAccessibility() {
    const std::string name = "accessibility";
    auto& accessibility = at_spi::AccessibilityBus::shared();
    if (accessibility.bus() == nullptr)
        return {name, Grade::missing, "no accessibility bus", withoutIt, accessibility.whyNot()};
    if (accessibility.isEnabled()) return {name, Grade::good, "switched on", "", ""};
    return {
        name, Grade::degraded, "switched off",
        "Programs show their text only while this is on. The host switches it on when it starts; programs "
        "that run already may need a restart.",
        "Start the host, or: gsettings set org.gnome.desktop.interface toolkit-accessibility true"};
}

} // namespace platform
