#include "platform/linux/x11/windows/stacking.h"

#include "platform/linux/x11/base/xlib_connection.h"

#include <algorithm>

namespace platform::x11 {

std::vector<WindowId> stackedWindows() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return {};
    auto windows = connection->values(connection->root(), connection->atom("_NET_CLIENT_LIST_STACKING"));
    // xfwm4 has no such list before the first window is raised over another.
    if (windows.empty())
        windows = connection->values(connection->root(), connection->atom("_NET_CLIENT_LIST"));
    return windows;
}

WindowId topmostWindow(pid_t process) {
    const auto windows = stackedWindows();
    const auto top = std::find_if(windows.rbegin(), windows.rend(),
                                  [&](WindowId window) { return windowProcess(window) == process; });
    return top == windows.rend() ? WindowId{0} : *top;
}

} // namespace platform::x11
