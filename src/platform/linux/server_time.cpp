#include "platform/linux/server_time.h"

#include "platform/linux/x11_connection.h"

#include <X11/Xatom.h>

namespace platform::x11 {
namespace {

::Time userTime = 0;

// A window of our own that is never shown; its property changes carry the time.
::Window clockWindow(Connection& connection) {
    static const ::Window window = [&connection] {
        const ::Window created =
            XCreateSimpleWindow(connection.display(), connection.root(), 0, 0, 1, 1, 0, 0, 0);
        XSelectInput(connection.display(), created, PropertyChangeMask);
        return created;
    }();
    return window;
}

} // namespace

::Time serverTime() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return CurrentTime;
    const ::Window window = clockWindow(*connection);
    XChangeProperty(connection->display(), window, XA_WM_NAME, XA_STRING, 8, PropModeAppend, nullptr, 0);
    XEvent event{};
    XWindowEvent(connection->display(), window, PropertyChangeMask, &event);
    return event.xproperty.time;
}

::Time lastUserTime() { return userTime; }
void setLastUserTime(::Time time) { userTime = time; }

} // namespace platform::x11
