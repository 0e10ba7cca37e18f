#include "platform/linux/x11/base/connection.h"
#include "platform/workspace.h"

#include <X11/XKBlib.h>

namespace platform {

void beep() {
    x11::Connection* connection = x11::Connection::shared();
    if (connection == nullptr) return;
    XkbBell(connection->display(), None, 0, None);
    XFlush(connection->display());
}

} // namespace platform
