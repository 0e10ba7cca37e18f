#include "platform/running_application.h"

#include "platform/linux/process.h"
#include "platform/linux/server_time.h"
#include "platform/linux/x11_connection.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace platform {
namespace {

using x11::Connection;

// The window that the program was found by, if it is still there, else the program's topmost one; 0 for
// none.
::Window windowToShow(Connection& connection, const RunningApplication::Process& process) {
    auto windows = connection.values(connection.root(), connection.atom("_NET_CLIENT_LIST_STACKING"));
    // xfwm4 has no such list before the first window is raised over another.
    if (windows.empty()) windows = connection.values(connection.root(), connection.atom("_NET_CLIENT_LIST"));
    if (std::ranges::find(windows, process.window()) != windows.end()) return process.window();
    const auto topmost = std::ranges::find_if(windows.rbegin(), windows.rend(), [&](::Window window) {
        return x11::windowProcess(window) == process.id();
    });
    return topmost == windows.rend() ? None : *topmost;
}

// Asks the window manager as a pager or taskbar does.
bool ask(Connection& connection, ::Window window, const char* request, long first, long second) {
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = window;
    message.xclient.message_type = connection.atom(request);
    message.xclient.format = 32;
    message.xclient.data.l[0] = first;
    message.xclient.data.l[1] = second;
    return connection.succeeds([&] {
        XSendEvent(connection.display(), connection.root(), False,
                   SubstructureNotifyMask | SubstructureRedirectMask, &message);
    });
}

// Openbox and metacity only mark a window on another workspace as urgent, and xfwm4 fetches it from there.
void goToWorkspaceOf(Connection& connection, ::Window window) {
    constexpr std::uint32_t everywhere = 0xFFFFFFFF;
    const auto there = connection.values(window, connection.atom("_NET_WM_DESKTOP"));
    const auto here = connection.values(connection.root(), connection.atom("_NET_CURRENT_DESKTOP"));
    if (there.empty() || here.empty() || there.front() == here.front() ||
        static_cast<std::uint32_t>(there.front()) == everywhere)
        return;
    ask(connection, connection.root(), "_NET_CURRENT_DESKTOP", static_cast<long>(there.front()),
        static_cast<long>(x11::serverTime()));
}

// As the user's own wish (source 2), which is not held against rules that keep programs from stealing the
// focus; metacity wants a current time all the same.
bool askToActivate(Connection& connection, ::Window window) {
    return ask(connection, window, "_NET_ACTIVE_WINDOW", 2, static_cast<long>(x11::serverTime()));
}

} // namespace

RunningApplication::RunningApplication(std::shared_ptr<const Process> process)
    : process_(std::move(process)) {}

RunningApplication RunningApplication::currentApplication() {
    static const auto process = std::make_shared<const Process>(::getpid(), None);
    return RunningApplication(process);
}

pid_t RunningApplication::processIdentifier() const { return process_->id(); }

std::optional<std::string> RunningApplication::bundleIdentifier() const { return process_->identity(); }

std::optional<std::string> RunningApplication::localizedName() const { return process_->name(); }

bool RunningApplication::isTerminated() const { return process_->isTerminated(); }

bool RunningApplication::activateFromApplication(const RunningApplication&) const {
    Connection* connection = Connection::shared();
    if (connection == nullptr || process_->isTerminated()) return false;
    const ::Window window = windowToShow(*connection, *process_);
    if (window == None) return false;
    goToWorkspaceOf(*connection, window);
    return askToActivate(*connection, window);
}

bool RunningApplication::operator==(const RunningApplication& other) const {
    return process_->isSameAs(*other.process_);
}

} // namespace platform
