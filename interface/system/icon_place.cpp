#include "system/icon_place.h"

#include <giomm/dbusconnection.h>

#include <string>

// Behind the others: it defines words that they use.
#include <gdk/gdkx.h>

namespace quillmark {

namespace {

bool hasWatcher() {
    constexpr int deadline = 500; // milliseconds
    try {
        const auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BUS_TYPE_SESSION);
        const auto name = Glib::Variant<Glib::ustring>::create("org.kde.StatusNotifierWatcher");
        const auto answer =
            bus->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                           Glib::VariantContainerBase::create_tuple(name), "org.freedesktop.DBus", deadline);
        Glib::Variant<bool> owned;
        answer.get_child(owned);
        return owned.get();
    } catch (const Glib::Error&) {
        return false; // no session bus
    }
}

bool hasNotificationArea() {
    auto* display = gdk_x11_get_default_xdisplay();
    const auto name = "_NET_SYSTEM_TRAY_S" + std::to_string(DefaultScreen(display));
    return XGetSelectionOwner(display, XInternAtom(display, name.c_str(), False)) != None;
}

} // namespace

bool hasPlaceForIcon() { return hasWatcher() || hasNotificationArea(); }

} // namespace quillmark
