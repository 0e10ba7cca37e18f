#include "platform/workspace.h"

#include "platform/linux/base/own_processes.h"
#include "platform/linux/programs/launch.h"
#include "platform/linux/programs/process.h"
#include "platform/linux/x11/windows/front_window.h"

#include <chrono>
#include <memory>

namespace platform {
namespace {

// A hot key pressed while another window comes to the front means that window. Under openbox 3.6.1 on a busy
// machine, presses up to 48 ms after such a request found the two apart.
constexpr std::chrono::milliseconds longestMoveOfTheFocus{100};

} // namespace

Workspace& Workspace::sharedWorkspace() {
    static Workspace workspace;
    return workspace;
}

std::optional<RunningApplication> Workspace::frontmostApplication() const {
    const auto front = x11::settledFrontWindow(longestMoveOfTheFocus);
    if (!front) return std::nullopt;
    if (isOwnProcess(front->process)) return RunningApplication::currentApplication();
    // A paste asks every few milliseconds; the process and the window's properties are read again only when
    // another window is in front.
    static std::shared_ptr<const RunningApplication::Process> last;
    if (!last || last->id() != front->process || last->window() != front->window || last->isTerminated())
        last = std::make_shared<const RunningApplication::Process>(front->process, front->window);
    return RunningApplication(last);
}

bool Workspace::openURL(const URL& url) const { return launchDefaultProgram(url); }

} // namespace platform
