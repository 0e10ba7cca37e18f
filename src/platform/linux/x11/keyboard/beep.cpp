#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/highlight.h"
#include "platform/main_queue.h"
#include "platform/workspace.h"

#include <X11/XKBlib.h>

#include <memory>

namespace platform {
namespace {

constexpr Seconds highlighted{0.15};

} // namespace

// Most desktops keep the X server's bell silent: without something to see, the hot key would seem dead.
void beep() {
    x11::XlibConnection* connection = x11::XlibConnection::shared();
    if (connection == nullptr) return;
    XkbBell(connection->display(), None, 0, None);
    XFlush(connection->display());
    MainQueue::asyncAfter(highlighted, [highlight = std::make_shared<x11::Highlight>()] {});
}

} // namespace platform
