#include "platform/linux/menu/menu_bar.h"

#include "platform/linux/menu/item.h"

namespace platform {
namespace {

// Done each time a menu opens, so nothing needs to watch what the actions depend on.
void greyDisabledItems(const Menu& menu) {
    for (const auto& item : menu.itemArray())
        item->native().widget.set_sensitive(item->isEnabled());
}

void fill(Gtk::MenuShell& shell, const Menu& menu) {
    for (const auto& item : menu.itemArray()) {
        auto& native = item->native();
        if (const Menu* submenu = item->submenu()) {
            native.submenu = std::make_unique<Gtk::Menu>();
            fill(*native.submenu, *submenu);
            native.submenu->signal_show().connect([submenu] { greyDisabledItems(*submenu); });
            native.widget.set_submenu(*native.submenu);
        }
        shell.append(native.widget);
    }
}

} // namespace

std::unique_ptr<Gtk::MenuBar> makeMenuBar(const Menu& menu) {
    auto bar = std::make_unique<Gtk::MenuBar>();
    fill(*bar, menu);
    bar->show();
    return bar;
}

} // namespace platform
