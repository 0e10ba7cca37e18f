#include "app/main_menu.h"

using platform::Menu;
using platform::MenuItem;

std::unique_ptr<Menu> makeMainMenu() {
    auto bar = std::make_unique<Menu>("Main Menu");
    auto& view = bar->addItem(std::make_unique<MenuItem>("View", "nativeView"));
    view.setSubmenu(std::make_unique<Menu>("View"));
    view.submenu()->addItem(std::make_unique<MenuItem>("Enter Full Screen", "nativeFullScreen"));
    return bar;
}
