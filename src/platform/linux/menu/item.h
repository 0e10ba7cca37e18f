#pragma once

#include "platform/menu.h"

#include <gtkmm/menu.h>
#include <gtkmm/menuitem.h>

#include <memory>
#include <utility>

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

} // namespace platform
