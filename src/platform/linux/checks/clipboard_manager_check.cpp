#include "platform/linux/checks/clipboard_manager_check.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/properties.h"

#include <X11/Xlib.h>

#include <fstream>

namespace platform {

using Grade = Finding::Grade;

Finding checkClipboardManager() {
    auto& connection = *x11::XlibConnection::shared();
    const std::string name = "clipboard-manager";
    const auto owner = XGetSelectionOwner(connection.display(), connection.atom("CLIPBOARD_MANAGER"));
    if (owner == None)
        return {name, Grade::degraded, "none",
                "When the host quits, what it has put on the pasteboard is lost.",
                "Install one and have it start at login, such as xfce4-clipman, parcellite or copyq."};
    std::string program;
    if (const auto process = x11::windowProcess(owner))
        std::getline(std::ifstream("/proc/" + std::to_string(*process) + "/comm"), program);
    return {name, Grade::good, program.empty() ? "one runs" : program, "", ""};
}

} // namespace platform
