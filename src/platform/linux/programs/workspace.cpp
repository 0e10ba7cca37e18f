#include "platform/workspace.h"

#include "platform/linux/base/own_processes.h"
#include "platform/linux/programs/process.h"
#include "platform/linux/x11/windows/front_window.h"

#include <gdk/gdk.h>
#include <gio/gio.h>

#include <memory>

namespace platform {
namespace {

using LaunchContext = std::unique_ptr<GAppLaunchContext, decltype(&g_object_unref)>;

// What a started program inherits: the display and the user's wish, so that its window comes to the front,
// and none of what the host has set for itself.
LaunchContext launchContext() {
    GdkDisplay* display = gdk_display_get_default();
    GAppLaunchContext* context = display != nullptr
                                     ? G_APP_LAUNCH_CONTEXT(gdk_display_get_app_launch_context(display))
                                     : g_app_launch_context_new();
    g_app_launch_context_unsetenv(context, "NO_AT_BRIDGE"); // it would keep that program from being read
    return {context, g_object_unref};
}

} // namespace

Workspace& Workspace::sharedWorkspace() {
    static Workspace workspace;
    return workspace;
}

std::optional<RunningApplication> Workspace::frontmostApplication() const {
    const auto front = x11::frontWindow();
    if (!front) return std::nullopt;
    if (isOwnProcess(front->process)) return RunningApplication::currentApplication();
    // Asked every few milliseconds during a paste: as long as nothing changes, the answer is the same object.
    static std::shared_ptr<const RunningApplication::Process> last;
    if (!last || last->id() != front->process || last->window() != front->window || last->isTerminated())
        last = std::make_shared<const RunningApplication::Process>(front->process, front->window);
    return RunningApplication(last);
}

bool Workspace::openURL(const URL& url) const {
    // No handler and a missing file are errors. What the started program does with it later is not known
    // here.
    return g_app_info_launch_default_for_uri(url.absoluteString().c_str(), launchContext().get(), nullptr) !=
           FALSE;
}

} // namespace platform
