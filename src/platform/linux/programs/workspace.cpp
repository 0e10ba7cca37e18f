#include "platform/workspace.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/base/own_processes.h"
#include "platform/linux/programs/process.h"
#include "platform/linux/x11/windows/front_window.h"

#include <gdk/gdk.h>
#include <gio/gio.h>

#include <memory>

namespace platform {
namespace {

using LaunchContext = Handle<GAppLaunchContext, g_object_unref>;

// The display and start-up notification, so that the started program's window comes to the front.
LaunchContext launchContext() {
    GdkDisplay* display = gdk_display_get_default();
    GAppLaunchContext* context = display != nullptr
                                     ? G_APP_LAUNCH_CONTEXT(gdk_display_get_app_launch_context(display))
                                     : g_app_launch_context_new();
    g_app_launch_context_unsetenv(context, "NO_AT_BRIDGE"); // it would keep that program from being read
    return LaunchContext(context);
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
    // A paste asks every few milliseconds; the process and the window's properties are read again only when
    // another window is in front.
    static std::shared_ptr<const RunningApplication::Process> last;
    if (!last || last->id() != front->process || last->window() != front->window || last->isTerminated())
        last = std::make_shared<const RunningApplication::Process>(front->process, front->window);
    return RunningApplication(last);
}

bool Workspace::openURL(const URL& url) const {
    // Without a handler and for a missing file it fails. Whether the started program can open the link is not
    // known here.
    return g_app_info_launch_default_for_uri(url.absoluteString().c_str(), launchContext().get(), nullptr) !=
           FALSE;
}

} // namespace platform
