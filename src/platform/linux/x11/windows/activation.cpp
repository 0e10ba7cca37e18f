#include "platform/linux/x11/windows/activation.h"

#include "platform/linux/x11/base/connection.h"
#include "platform/linux/x11/base/server_time.h"

#include <X11/Xlib.h>

#include <cstdint>

namespace platform::x11 {
namespace {

// Asks the window manager as a pager or taskbar does.
bool ask(Connection& connection, WindowId window, const char* request, long first, long second) {
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = window;
    message.xclient.message_type = connection.atom(request);
    message.xclient.format = 32;
    message.xclient.data.l[0] = first;
    message.xclient.data.l[1] = second;
    return connection.succeeds([&] {
        XSendEvent(connection.display(), connection.root(), False,
                   SubstructureNotifyMask | SubstructureRedirectMask, &message);
    });
}

// Openbox and metacity only mark a window on another workspace as urgent, and xfwm4 fetches it from there.
void goToWorkspaceOf(Connection& connection, WindowId window) {
    constexpr std::uint32_t everywhere = 0xFFFFFFFF;
    const auto there = connection.values(window, connection.atom("_NET_WM_DESKTOP"));
    const auto here = connection.values(connection.root(), connection.atom("_NET_CURRENT_DESKTOP"));
    if (there.empty() || here.empty() || there.front() == here.front() ||
        static_cast<std::uint32_t>(there.front()) == everywhere)
        return;
    ask(connection, connection.root(), "_NET_CURRENT_DESKTOP", static_cast<long>(there.front()),
        static_cast<long>(serverTime()));
}

// As the user's own wish (source 2), which is not held against rules that keep programs from stealing the
// focus; metacity wants a current time all the same.
bool askToActivate(Connection& connection, WindowId window) {
    return ask(connection, window, "_NET_ACTIVE_WINDOW", 2, static_cast<long>(serverTime()));
}

} // namespace

bool activateWindow(WindowId window) {
    Connection* connection = Connection::shared();
    if (connection == nullptr || window == None) return false;
    goToWorkspaceOf(*connection, window);
    return askToActivate(*connection, window);
}

} // namespace platform::x11
