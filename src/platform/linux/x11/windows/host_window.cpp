#include "platform/linux/x11/windows/host_window.h"

#include <X11/Xlib.h>
#include <gdk/gdkx.h>

namespace platform::x11 {

std::uint32_t prepareToPresent(GdkWindow* window, bool toActiveSpace) {
    // With an older time metacity takes the window for one that nobody asked for, and leaves it behind
    // others.
    const std::uint32_t time = gdk_x11_get_server_time(window);
    gdk_x11_window_set_user_time(window, time);
    if (toActiveSpace) gdk_x11_window_move_to_current_desktop(window);
    return time;
}

bool canMinimise(GdkWindow* window) {
    return gdk_x11_screen_supports_net_wm_hint(gdk_window_get_screen(window),
                                               gdk_atom_intern_static_string("_NET_WM_ACTION_MINIMIZE"));
}

// Tk 8.6 takes no keys that are passed on, only those from the X server. A GTK plug sets the property only
// after it has been embedded, so that it is read anew for each key.
bool takesForwardedKeys(GdkWindow* view) {
    GdkDisplay* display = gdk_window_get_display(view);
    const Atom protocol = gdk_x11_get_xatom_by_name_for_display(display, "_XEMBED_INFO");
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    gdk_x11_display_error_trap_push(display); // the view may be gone
    XGetWindowProperty(gdk_x11_display_get_xdisplay(display), gdk_x11_window_get_xid(view), protocol, 0, 0,
                       False, AnyPropertyType, &type, &format, &count, &rest, &value);
    gdk_x11_display_error_trap_pop_ignored(display);
    if (value != nullptr) XFree(value);
    return type != None;
}

} // namespace platform::x11
