#include "platform/linux/x11/windows/front_window.h"

#include "platform/linux/x11/base/connection.h"
#include "platform/linux/x11/windows/window_class.h"

namespace platform::x11 {
namespace {

bool hasWindowManager(Connection& connection) {
    return !connection.values(connection.root(), connection.atom("_NET_SUPPORTING_WM_CHECK")).empty();
}

bool isInside(Connection& connection, ::Window window, ::Window ancestor) {
    for (; window != None && window != connection.root(); window = parentWindow(window))
        if (window == ancestor) return true;
    return false;
}

std::optional<FrontWindow> windowInFront() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return std::nullopt;
    ::Window window = activeWindow();
    if (window == None && !hasWindowManager(*connection)) window = programWindow(focusedWindow());
    // Asked before the focus: a window number is given anew once its program has ended, and only the window
    // that has the focus afterwards is certainly still the one whose process this is.
    const auto process = windowProcess(window);
    const ::Window focus = focusedWindow();
    if (!process || focus == None) return std::nullopt;

    // Toolkits put the focus on a child of their window, some window managers on the frame around it, and a
    // popup that is no child of anything still belongs to the same program. A window that has gone belongs to
    // nobody, but openbox goes on naming the last one until there is another.
    if (isInside(*connection, focus, window) || isInside(*connection, window, focus) ||
        (windowProcess(focus) == process && parentWindow(window) != None))
        return FrontWindow{window, *process};
    return std::nullopt;
}

std::optional<FrontWindow> lastNamed;

} // namespace

WindowId activeWindow() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return None;
    // xfwm4 answers with two values; the first is the window.
    const auto windows = connection->values(connection->root(), connection->atom("_NET_ACTIVE_WINDOW"));
    return windows.empty() ? None : windows.front();
}

WindowId focusedWindow() {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return None;
    ::Window focus = None;
    int revertTo = 0;
    XGetInputFocus(connection->display(), &focus, &revertTo);
    return focus == PointerRoot ? None : focus;
}

std::optional<FrontWindow> frontWindow() {
    auto front = windowInFront();
    if (front) lastNamed = front;
    return front;
}

bool isStillInFront() {
    if (!lastNamed) return true;
    if (const auto front = windowInFront()) return front == lastNamed;
    // In between, openbox names no window for a moment even where the focus stays.
    return windowProcess(focusedWindow()) == lastNamed->process;
}

} // namespace platform::x11
