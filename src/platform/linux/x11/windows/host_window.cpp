#include "platform/linux/x11/windows/host_window.h"

#include <X11/Xlib.h>
#include <gdk/gdkx.h>

namespace platform::x11 {

std::uint32_t prepareToPresent(GdkWindow* window, bool toActiveSpace) {
    // The newest time there is: with an older one metacity takes the window for an unasked one and leaves it
    // behind.
    const std::uint32_t time = gdk_x11_get_server_time(window);
    gdk_x11_window_set_user_time(window, time);
    if (toActiveSpace) gdk_x11_window_move_to_current_desktop(window);
    return time;
}

// Tk's windows, for one, do not: they only hear the keys that the X server gives them. Asked each time, since
// a GTK plug says so only after it has been embedded.
bool takesForwardedKeys(GdkWindow* view) {
    GdkDisplay* display = gdk_window_get_display(view);
    const Atom protocol = gdk_x11_get_xatom_by_name_for_display(display, "_XEMBED_INFO");
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    gdk_x11_display_error_trap_push(display); // it may be gone again
    XGetWindowProperty(gdk_x11_display_get_xdisplay(display), gdk_x11_window_get_xid(view), protocol, 0, 0,
                       False, AnyPropertyType, &type, &format, &count, &rest, &value);
    gdk_x11_display_error_trap_pop_ignored(display);
    if (value != nullptr) XFree(value);
    return type != None;
}

} // namespace platform::x11
