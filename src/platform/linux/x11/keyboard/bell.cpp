#include "platform/linux/x11/keyboard/bell.h"

#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/XKBlib.h>

namespace platform::x11 {

void ringBell() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return;
    XkbBell(connection->display(), None, 0, None);
    XFlush(connection->display());
}

} // namespace platform::x11
