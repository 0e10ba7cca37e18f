#include "platform/linux/window/view_elements.h"

#include <gdk/gdkx.h>
#include <gtk/gtk-a11y.h>
#include <gtk/gtkx.h>

#include <string>

namespace platform {
namespace {

// Where GTK views say which of their objects on the accessibility bus stands for them.
constexpr const char* addressProperty = "_XEMBED_AT_SPI_PATH";

std::string addressOf(GdkWindow* view) {
    constexpr gulong mostBytes = 1024;
    const GdkAtom name = gdk_atom_intern_static_string(addressProperty);
    guchar* bytes = nullptr;
    gint count = 0;
    if (gdk_property_get(view, name, name, 0, mostBytes, FALSE, nullptr, nullptr, &count, &bytes) == FALSE)
        return {};
    std::string address(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    g_free(bytes);
    return address;
}

GdkFilterReturn addressArrived(GdkXEvent* event, GdkEvent*, gpointer data) {
    const auto& change = static_cast<const XEvent*>(event)->xproperty;
    auto* socket = static_cast<GtkSocket*>(data);
    GdkWindow* view = gtk_socket_get_plug_window(socket);
    if (change.type != PropertyNotify || view == nullptr ||
        change.atom != gdk_x11_get_xatom_by_name_for_display(gdk_window_get_display(view), addressProperty))
        return GDK_FILTER_CONTINUE;
    std::string address = addressOf(view);
    if (!address.empty())
        gtk_socket_accessible_embed(GTK_SOCKET_ACCESSIBLE(gtk_widget_get_accessible(GTK_WIDGET(socket))),
                                    address.data());
    return GDK_FILTER_CONTINUE;
}

} // namespace

// GTK 3.24 looks for the address once, when the view's window is created; a GTK view writes it after that.
void showElementsOfViewsIn(Gtk::Socket& socket) {
    socket.signal_plug_added().connect([&socket] {
        gdk_window_add_filter(gtk_socket_get_plug_window(socket.gobj()), addressArrived, socket.gobj());
    });
}

} // namespace platform
