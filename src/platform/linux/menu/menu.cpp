#include "platform/application.h"
#include "platform/linux/menu/actions.h"
#include "platform/linux/menu/item.h"
#include "platform/linux/menu/shortcuts.h"

#include <gtkmm/separatormenuitem.h>

#include <utility>

namespace platform {

MenuItem::MenuItem(std::string title, std::optional<std::string> identifier)
    : title_(std::move(title)), identifier_(std::move(identifier)),
      native_(std::make_unique<Native>(std::make_unique<Gtk::MenuItem>(title_))) {}

std::unique_ptr<MenuItem> MenuItem::separatorItem() {
    auto item = std::make_unique<MenuItem>("", std::nullopt);
    item->separator_ = true;
    item->native_ = std::make_unique<Native>(std::make_unique<Gtk::SeparatorMenuItem>());
    return item;
}

MenuItem::~MenuItem() = default;

const std::string& MenuItem::title() const { return title_; }

void MenuItem::setTitle(std::string_view title) {
    title_ = title;
    if (!separator_) native_->widget.set_label(title_); // a label would turn the separator into an item
}

const std::optional<std::string>& MenuItem::identifier() const { return identifier_; }

Menu* MenuItem::submenu() const { return submenu_.get(); }

void MenuItem::setSubmenu(std::unique_ptr<Menu> submenu) { submenu_ = std::move(submenu); }

std::optional<Selector> MenuItem::action() const { return action_; }

void MenuItem::setAction(Selector action) {
    if (!action_) native_->widget.signal_activate().connect([this] { performSoon(*action_); });
    action_ = action;
}

const std::string& MenuItem::keyEquivalent() const { return keyEquivalent_; }

CGEventFlags MenuItem::keyEquivalentModifierMask() const { return keyEquivalentModifierMask_; }

void MenuItem::setKeyEquivalent(std::string_view key, CGEventFlags modifierMask) {
    keyEquivalent_ = key;
    keyEquivalentModifierMask_ = modifierMask;
    const auto shown = shortcutOf(*this);
    gtk_accel_label_set_accel(GTK_ACCEL_LABEL(native_->widget.get_child()->gobj()), shown.key,
                              shown.modifiers);
}

bool MenuItem::isEnabled() const { return !action_ || canPerform(*action_); }

MenuItem::Native& MenuItem::native() const { return *native_; }

namespace {

// A menu shows its own title where it opens from, in the bar for instance.
void retitleOpener(const Menu& tree, const Menu& menu) {
    for (const auto& item : tree.itemArray()) {
        if (item->submenu() == &menu) item->native().widget.set_label(menu.title());
        if (item->submenu() != nullptr) retitleOpener(*item->submenu(), menu);
    }
}

} // namespace

Menu::Menu(std::string title) : title_(std::move(title)) {}

Menu::~Menu() = default;

const std::string& Menu::title() const { return title_; }

void Menu::setTitle(std::string_view title) {
    title_ = title;
    if (const Menu* main = Application::sharedApplication().mainMenu()) retitleOpener(*main, *this);
}

MenuItem& Menu::addItem(std::unique_ptr<MenuItem> item) { return *items_.emplace_back(std::move(item)); }

const std::vector<std::unique_ptr<MenuItem>>& Menu::itemArray() const { return items_; }

} // namespace platform
