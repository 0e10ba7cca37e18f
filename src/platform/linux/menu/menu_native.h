#pragma once

#include "platform/menu.h"

#include <gtkmm/accelgroup.h>
#include <gtkmm/menu.h>
#include <gtkmm/menubar.h>
#include <gtkmm/menuitem.h>

#include <memory>

namespace platform {

// The entry's widget. Belongs to the entry; the bars and menus it stands in do not own it.
class MenuItem::Native {
public:
    explicit Native(std::unique_ptr<Gtk::MenuItem> entry) : owned_(std::move(entry)), widget(*owned_) {
        widget.show();
    }

private:
    std::unique_ptr<Gtk::MenuItem> owned_;

public:
    Gtk::MenuItem& widget;
    std::unique_ptr<Gtk::Menu> submenu;
};

// The bar of a main menu, with what opens from it. The menu must outlive it.
std::unique_ptr<Gtk::MenuBar> makeMenuBar(const Menu& menu);

// The keys of a main menu's items, for the window that carries the bar. Those of the Edit actions are only
// shown in the menu: the view that takes the keys gets them anyway.
Glib::RefPtr<Gtk::AccelGroup> makeMenuKeys(const Menu& menu);

} // namespace platform
