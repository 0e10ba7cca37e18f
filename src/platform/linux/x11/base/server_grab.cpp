#include "platform/linux/x11/base/server_grab.h"

#include "platform/linux/x11/base/xlib_connection.h"

namespace platform::x11 {

ServerGrab::ServerGrab() {
    if (XlibConnection* connection = XlibConnection::shared()) XGrabServer(connection->display());
}

ServerGrab::~ServerGrab() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return;
    XUngrabServer(connection->display());
    XFlush(connection->display());
}

} // namespace platform::x11
