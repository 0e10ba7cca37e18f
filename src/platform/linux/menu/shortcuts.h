#pragma once

#include "platform/menu.h"

#include <gtk/gtk.h>
#include <gtkmm/accelgroup.h>

namespace platform {

// A key with modifiers as the toolkit has it.
struct Shortcut {
    guint key = 0; // 0: none
    GdkModifierType modifiers{};
};

// The shortcut of a menu's item; key 0 when the item has none.
Shortcut shortcutOf(const MenuItem& item);

// The shortcuts of a main menu's items, for the window that carries the menu bar. Without those of the Edit
// actions: the view that has the keyboard gets these keys itself.
Glib::RefPtr<Gtk::AccelGroup> makeShortcuts(const Menu& menu);

} // namespace platform
