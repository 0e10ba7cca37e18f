#pragma once

#include "platform/menu.h"

#include <gtkmm/menu.h>
#include <gtkmm/menubar.h>
#include <gtkmm/menuitem.h>

#include <memory>

namespace platform {

// The entry's widget. Belongs to the entry; the bars and menus it stands in do not own it.
class MenuItem::Native {
public:
    explicit Native(const std::string& title) : widget(title) { widget.show(); }

    Gtk::MenuItem widget;
    std::unique_ptr<Gtk::Menu> submenu;
};

// The bar of a main menu, with what opens from it. The menu must outlive it.
std::unique_ptr<Gtk::MenuBar> makeMenuBar(const Menu& menu);

} // namespace platform
