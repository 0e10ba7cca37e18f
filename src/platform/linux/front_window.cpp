#include "platform/linux/front_window.h"

#include "platform/linux/x11_connection.h"

namespace platform::x11 {
namespace {

::Window parentOf(Connection& connection, ::Window window) {
    ::Window root = None;
    ::Window parent = None;
    ::Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(connection.display(), window, &root, &parent, &children, &count) == 0) return None;
    if (children != nullptr) XFree(children);
    return parent;
}

bool isInside(Connection& connection, ::Window window, ::Window ancestor) {
    for (; window != None && window != connection.root(); window = parentOf(connection, window))
        if (window == ancestor) return true;
    return false;
}

/// The program's own window among the focused window's ancestors, where no window manager names an active
/// one.
::Window topLevelOf(Connection& connection, ::Window window) {
    for (; window != None && window != connection.root(); window = parentOf(connection, window))
        if (connection.text(window, connection.atom("WM_CLASS"))) return window;
    return None;
}

} // namespace

std::optional<FrontWindow> frontWindow() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return std::nullopt;
    const ::Window focus = focusedWindow();
    if (focus == None) return std::nullopt;

    // xfwm4 answers with two values; the first is the window.
    const auto active = connection->values(connection->root(), connection->atom("_NET_ACTIVE_WINDOW"));
    const ::Window window = active.empty() ? topLevelOf(*connection, focus) : active.front();
    const auto process = windowProcess(window);
    if (!process) return std::nullopt;

    // Toolkits put the focus on a child of their window, some window managers on the frame around it, and a
    // popup that is no child of anything still belongs to the same program.
    if (isInside(*connection, focus, window) || isInside(*connection, window, focus) ||
        windowProcess(focus) == process)
        return FrontWindow{window, *process};
    return std::nullopt;
}

} // namespace platform::x11
