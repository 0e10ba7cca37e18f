#include "platform/linux/x11/windows/front_window.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/activation.h"
#include "platform/linux/x11/windows/window_class.h"
#include "platform/main_queue.h"

namespace platform::x11 {
namespace {

constexpr std::uint32_t lookInterval = 2000; // microseconds

bool hasWindowManager(XlibConnection& connection) {
    return !connection.values(connection.root(), connection.atom("_NET_SUPPORTING_WM_CHECK")).empty();
}

bool isInside(XlibConnection& connection, ::Window window, ::Window ancestor) {
    for (; window != None && window != connection.root(); window = parentWindow(window))
        if (window == ancestor) return true;
    return false;
}

struct Look {
    std::optional<FrontWindow> front;
    // The active window and the focus are of different programs, or another window is about to come.
    bool isMoving = false;
};

Look look() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return {};
    ::Window window = activeWindow();
    if (window == None && !hasWindowManager(*connection)) window = programWindow(focusedWindow());
    // Asked before the focus: once its program has ended, a window's number may be given to another, so that
    // only a window that has the focus afterwards surely belongs to that process.
    const auto process = windowProcess(window);
    const ::Window focus = focusedWindow();
    if (!process || focus == None) return {{}, process || focus != None};

    // Toolkits put the focus on a child of their window, some window managers on the frame around it, and a
    // popup that is nobody's child belongs to the same program. Openbox goes on naming a window that has gone
    // until there is another.
    const FrontWindow front{window, *process};
    if (isOnlyPassing(front)) return {{}, true};
    if (isInside(*connection, focus, window) || isInside(*connection, window, focus)) return {front};
    if (windowProcess(focus) != process) return {{}, true};
    if (parentWindow(window) != None) return {front};
    return {};
}

} // namespace

WindowId activeWindow() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return None;
    // xfwm4 answers with two values; the first is the window.
    const auto windows = connection->values(connection->root(), connection->atom("_NET_ACTIVE_WINDOW"));
    return windows.empty() ? None : windows.front();
}

WindowId focusedWindow() {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return None;
    ::Window focus = None;
    int revertTo = 0;
    XGetInputFocus(connection->display(), &focus, &revertTo);
    return focus == PointerRoot ? None : focus;
}

std::optional<FrontWindow> frontWindow() { return look().front; }

std::optional<FrontWindow> settledFrontWindow(std::chrono::milliseconds limit) {
    const TimePoint end = now() + limit;
    Look seen = look();
    while (seen.isMoving && now() < end) {
        usleep(lookInterval);
        seen = look();
    }
    return seen.front;
}

} // namespace platform::x11
