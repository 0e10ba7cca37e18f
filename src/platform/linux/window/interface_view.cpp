#include "platform/linux/window/interface_view.h"

#include "platform/linux/window/view_elements.h"
#include "platform/linux/x11/windows/host_window.h"

#include <gtk/gtkx.h>

#include <memory>

namespace platform {
namespace {

struct Freed {
    void operator()(GdkEvent* event) const { gdk_event_free(event); }
};

std::unique_ptr<GdkEvent, Freed> keyEvent(GdkEventType type, GtkWidget* receiver, guint key,
                                          GdkKeymapKey place, GdkModifierType modifiers) {
    std::unique_ptr<GdkEvent, Freed> event(gdk_event_new(type));
    event->key.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(receiver)));
    event->key.time = gtk_get_current_event_time();
    event->key.state = modifiers;
    event->key.keyval = key;
    event->key.hardware_keycode = static_cast<guint16>(place.keycode);
    event->key.group = static_cast<guint8>(place.group);
    gdk_event_set_device(
        event.get(), gdk_seat_get_keyboard(gdk_display_get_default_seat(gtk_widget_get_display(receiver))));
    return event;
}

} // namespace

InterfaceView::InterfaceView() {
    socket_.signal_plug_added().connect([this] { socket_.grab_focus(); });
    socket_.signal_plug_removed().connect([] { return true; }); // else the socket goes with its first plug
    showElementsOfViewsIn(socket_);
    // A socket paints nothing itself, and its window would stay black.
    socket_.get_style_context()->add_class("view");
    socket_.signal_draw().connect([this](const Cairo::RefPtr<Cairo::Context>& context) {
        socket_.get_style_context()->render_background(context, 0, 0, socket_.get_allocated_width(),
                                                       socket_.get_allocated_height());
        return false;
    });
    add(socket_);
    show_all();
}

unsigned long InterfaceView::embeddingWindow() const {
    const auto window = socket_.get_id();
    // The interface may look for it at once, over a connection of its own.
    gdk_display_flush(gdk_display_get_default());
    return window;
}

bool InterfaceView::takesKeys() const {
    GdkWindow* view = gtk_socket_get_plug_window(const_cast<GtkSocket*>(socket_.gobj()));
    return view != nullptr && socket_.has_focus() && x11::takesForwardedKeys(view);
}

// The socket passes on what it is given (XEMBED); the view reads key code and state.
void InterfaceView::typeKey(guint key, GdkModifierType modifiers) {
    auto* socket = GTK_WIDGET(socket_.gobj());
    GdkKeymapKey* places = nullptr;
    gint count = 0;
    auto* keymap = gdk_keymap_get_for_display(gtk_widget_get_display(socket));
    if (!gdk_keymap_get_entries_for_keyval(keymap, key, &places, &count)) return;
    for (const auto type : {GDK_KEY_PRESS, GDK_KEY_RELEASE})
        gtk_widget_event(socket, keyEvent(type, socket, key, places[0], modifiers).get());
    g_free(places);
}

} // namespace platform
