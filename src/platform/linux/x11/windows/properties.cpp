#include "platform/linux/x11/windows/properties.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xutil.h>
#include <X11/extensions/XRes.h>
#include <glib.h>

namespace platform::x11 {
namespace {

// The process at the other end of the client's socket, as the server knows it. A program in a sandbox knows
// itself by another number.
std::optional<pid_t> clientProcess(Display* display, ::Window window) {
    XResClientIdSpec wanted{window, XRES_CLIENT_ID_PID_MASK};
    long count = 0;
    XResClientIdValue* ids = nullptr;
    if (XResQueryClientIds(display, 1, &wanted, &count, &ids) != Success) return std::nullopt;
    std::optional<pid_t> process;
    for (long i = 0; i < count; ++i)
        if (const pid_t id = XResGetClientPid(&ids[i]); id > 0) process = id;
    XResClientIdsDestroy(count, ids);
    return process;
}

std::string validUtf8(const std::string& bytes) {
    const Handle<char, g_free> valid(g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size())));
    return valid.get();
}

} // namespace

std::optional<pid_t> windowProcess(WindowId window) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr || window == None) return std::nullopt;
    if (const auto process = clientProcess(connection->display(), window)) return process;
    const auto claimed = connection->values(window, connection->atom("_NET_WM_PID"));
    if (claimed.empty() || claimed.front() == 0 || claimed.front() > 0x7fffffff) return std::nullopt;
    return static_cast<pid_t>(claimed.front());
}

std::optional<std::string> windowTitle(WindowId window) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr || window == None) return std::nullopt;
    if (const auto title = connection->text(window, connection->atom("_NET_WM_NAME")))
        return validUtf8(*title);
    XTextProperty property{};
    if (XGetWMName(connection->display(), window, &property) == 0) return std::nullopt;
    const Handle<unsigned char, XFree> owned(property.value);
    char** lines = nullptr;
    int count = 0;
    if (Xutf8TextPropertyToTextList(connection->display(), &property, &lines, &count) < Success)
        return std::nullopt;
    std::optional<std::string> title;
    if (count > 0) title = validUtf8(lines[0]);
    XFreeStringList(lines);
    return title;
}

std::optional<std::string> windowApplicationId(WindowId window) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr || window == None) return std::nullopt;
    return connection->text(window, connection->atom("_GTK_APPLICATION_ID"));
}

WindowId parentWindow(WindowId window) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr || window == None) return None;
    ::Window root = None;
    ::Window parent = None;
    ::Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(connection->display(), window, &root, &parent, &children, &count) == 0) return None;
    if (children != nullptr) XFree(children);
    return parent;
}

} // namespace platform::x11
