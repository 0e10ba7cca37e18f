#include "platform/linux/x11/base/server_time.h"

#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xatom.h>

namespace platform::x11 {
namespace {

// A window that is never shown: the notice of a change of its property carries the server's time.
::Window clockWindow(XlibConnection& connection) {
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
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return CurrentTime;
    const ::Window window = clockWindow(*connection);
    XChangeProperty(connection->display(), window, XA_WM_NAME, XA_STRING, 8, PropModeAppend, nullptr, 0);
    XEvent event{};
    XWindowEvent(connection->display(), window, PropertyChangeMask, &event);
    return event.xproperty.time;
}

} // namespace platform::x11
