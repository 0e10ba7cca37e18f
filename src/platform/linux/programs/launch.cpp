#include "platform/linux/programs/launch.h"

#include "platform/linux/base/child_process.h"
#include "platform/linux/base/handle.h"

#include <gdk/gdk.h>
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <unistd.h>

#include <string_view>

namespace platform {
namespace {

using LaunchContext = Handle<GAppLaunchContext, g_object_unref>;

// The display and start-up notification, so that the started program's window comes to the front.
LaunchContext launchContext() {
    GdkDisplay* display = gdk_display_get_default();
    LaunchContext context(display != nullptr
                              ? G_APP_LAUNCH_CONTEXT(gdk_display_get_app_launch_context(display))
                              : g_app_launch_context_new());
    const Handle<char*, g_strfreev> names(g_listenv());
    for (char** name = names.get(); *name != nullptr; ++name)
        if (std::string_view(*name).starts_with("QUILLMARK_"))
            g_app_launch_context_unsetenv(context.get(), *name);
    return context;
}

// Runs in the child, between fork and exec.
void prepareChild(gpointer) {
    setsid();
    undoHostSettings();
}

} // namespace

bool launchDefaultProgram(const URL& url) {
    const Handle<GFile, g_object_unref> file(g_file_new_for_uri(url.absoluteString().c_str()));
    const Handle<GAppInfo, g_object_unref> program(
        g_file_query_default_handler(file.get(), nullptr, nullptr));
    if (!program || !G_IS_DESKTOP_APP_INFO(program.get())) return false;
    GList uris{const_cast<char*>(url.absoluteString().c_str()), nullptr, nullptr};
    return g_desktop_app_info_launch_uris_as_manager(G_DESKTOP_APP_INFO(program.get()), &uris,
                                                     launchContext().get(), G_SPAWN_SEARCH_PATH, prepareChild,
                                                     nullptr, nullptr, nullptr, nullptr) != FALSE;
}

} // namespace platform
