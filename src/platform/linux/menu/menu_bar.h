#pragma once

#include "platform/menu.h"

#include <gtkmm/menubar.h>

#include <memory>

namespace platform {

// The bar of a main menu, with what opens from it. The menu must outlive it.
std::unique_ptr<Gtk::MenuBar> makeMenuBar(const Menu& menu);

} // namespace platform
