#include "platform/linux/x11_connection.h"

#include "platform/linux/x11_errors.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XRes.h>
#include <glib.h>
#include <unistd.h>

namespace platform::x11 {
namespace {

using FreeX = decltype([](void* data) { XFree(data); });

// What is read of one property at most, in the protocol's units of four bytes.
constexpr long longestProperty = 65536;

struct Property {
    std::unique_ptr<unsigned char, FreeX> data;
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
};

Property read(Display* display, ::Window window, Atom name) {
    Property property;
    unsigned char* data = nullptr;
    unsigned long left = 0;
    if (XGetWindowProperty(display, window, name, 0, longestProperty, False, AnyPropertyType, &property.type,
                           &property.format, &property.count, &left, &data) != Success)
        return {};
    property.data.reset(data);
    if (!property.data) property.count = 0;
    return property;
}

// The process at the other end of the client's socket, as the server knows it. True also for a sandboxed
// program, whose own idea of its process identifier means something else out here.
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
    const std::unique_ptr<char, decltype(&g_free)> valid(
        g_utf8_make_valid(bytes.data(), static_cast<gssize>(bytes.size())), g_free);
    return valid.get();
}

} // namespace

Connection* Connection::shared() {
    static Connection connection;
    static const bool tried = [] {
        connection.display_ = XOpenDisplay(nullptr);
        if (connection.display_ != nullptr) connection.root_ = DefaultRootWindow(connection.display_);
        return true;
    }();
    if (!tried || connection.display_ == nullptr) return nullptr;
    keepErrors(connection.display_);
    return &connection;
}

Atom Connection::atom(const char* name) {
    for (const auto& [known, value] : atoms_)
        if (known == name) return value;
    return atoms_.emplace_back(name, XInternAtom(display_, name, False)).second;
}

bool Connection::succeeds(const std::function<void()>& requests) {
    const unsigned long first = XNextRequest(display_);
    requests();
    XSync(display_, False);
    return !failedSince(display_, first);
}

std::vector<unsigned long> Connection::values(::Window window, Atom name) {
    const Property property = read(display_, window, name);
    if (property.format != 32) return {};
    const auto* first = reinterpret_cast<const unsigned long*>(property.data.get()); // Xlib hands out longs
    return {first, first + property.count};
}

std::optional<std::string> Connection::text(::Window window, Atom name) {
    const Property property = read(display_, window, name);
    if (property.format != 8) return std::nullopt;
    return std::string(reinterpret_cast<const char*>(property.data.get()), property.count);
}

::Window activeWindow() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return None;
    // xfwm4 answers with two values; the first is the window.
    const auto windows = connection->values(connection->root(), connection->atom("_NET_ACTIVE_WINDOW"));
    return windows.empty() ? None : windows.front();
}

::Window focusedWindow() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return None;
    ::Window focus = None;
    int revertTo = 0;
    XGetInputFocus(connection->display(), &focus, &revertTo);
    return focus == PointerRoot ? None : focus;
}

std::optional<pid_t> windowProcess(::Window window) {
    Connection* connection = Connection::shared();
    if (connection == nullptr || window == None) return std::nullopt;
    if (const auto process = clientProcess(connection->display(), window)) return process;
    const auto claimed = connection->values(window, connection->atom("_NET_WM_PID"));
    if (claimed.empty() || claimed.front() == 0 || claimed.front() > 0x7fffffff) return std::nullopt;
    return static_cast<pid_t>(claimed.front());
}

std::optional<std::string> windowTitle(::Window window) {
    Connection* connection = Connection::shared();
    if (connection == nullptr || window == None) return std::nullopt;
    if (const auto title = connection->text(window, connection->atom("_NET_WM_NAME")))
        return validUtf8(*title);
    XTextProperty property{};
    if (XGetWMName(connection->display(), window, &property) == 0) return std::nullopt;
    const std::unique_ptr<unsigned char, FreeX> owned(property.value);
    char** lines = nullptr;
    int count = 0;
    if (Xutf8TextPropertyToTextList(connection->display(), &property, &lines, &count) < Success)
        return std::nullopt;
    std::optional<std::string> title;
    if (count > 0) title = validUtf8(lines[0]);
    XFreeStringList(lines);
    return title;
}

} // namespace platform::x11
