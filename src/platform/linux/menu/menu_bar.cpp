#include "platform/linux/menu/menu_bar.h"

#include "platform/linux/menu/item.h"
#include "platform/main_queue.h"

#include <utility>

namespace platform {
namespace {

// Done each time a menu opens, so nothing needs to watch what the actions depend on.
void greyDisabledItems(const Menu& menu) {
    for (const auto& item : menu.itemArray())
        item->native().widget.set_sensitive(item->isEnabled());
}

// What opens from the items of that menu; a second call replaces it.
void makeSubmenus(const Menu& menu) {
    for (const auto& item : menu.itemArray()) {
        const Menu* submenu = item->submenu();
        if (submenu == nullptr) continue;
        auto& native = item->native();
        const auto former = std::exchange(native.submenu, std::make_unique<Gtk::Menu>());
        for (const auto& entry : submenu->itemArray()) {
            if (former) former->remove(entry->native().widget);
            native.submenu->append(entry->native().widget);
        }
        native.submenu->signal_show().connect([submenu] { greyDisabledItems(*submenu); });
        native.widget.set_submenu(*native.submenu);
        makeSubmenus(*submenu);
    }
}

} // namespace

MenuBar::MenuBar(const Menu& menu) : menu_(menu) {
    for (const auto& item : menu.itemArray())
        append(item->native().widget);
    makeSubmenus(menu);
    show();
}

// GTK leaves a menu open when its window goes.
void MenuBar::on_unmap() {
    deactivate();
    Gtk::MenuBar::on_unmap();
}

// Each opening gets menus of its own: GTK 3.24 settles when a menu first opens whether its window has a
// see-through edge for a shadow. If a compositing manager comes or goes later, such a menu has a black edge
// or is too small for its items.
void MenuBar::on_deactivate() {
    Gtk::MenuBar::on_deactivate();
    MainQueue::async(life_, [this] {
        if (get_selected_item() == nullptr) makeSubmenus(menu_);
    });
}

} // namespace platform
