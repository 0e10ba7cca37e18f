#include "platform/menu.h"

namespace platform {

// The simulated desktop draws no menus: what the host sets is all there is.
class MenuItem::Native {};

Menu::Menu(std::string title) : title_(std::move(title)) {}
Menu::~Menu() = default;

const std::string& Menu::title() const { return title_; }
void Menu::setTitle(std::string_view title) { title_ = title; }

MenuItem& Menu::addItem(std::unique_ptr<MenuItem> item) { return *items_.emplace_back(std::move(item)); }
const std::vector<std::unique_ptr<MenuItem>>& Menu::itemArray() const { return items_; }

MenuItem::MenuItem(std::string title, std::optional<std::string> identifier)
    : title_(std::move(title)), identifier_(std::move(identifier)) {}
MenuItem::~MenuItem() = default;

const std::string& MenuItem::title() const { return title_; }
void MenuItem::setTitle(std::string_view title) { title_ = title; }
const std::optional<std::string>& MenuItem::identifier() const { return identifier_; }
Menu* MenuItem::submenu() const { return submenu_.get(); }
void MenuItem::setSubmenu(std::unique_ptr<Menu> submenu) { submenu_ = std::move(submenu); }

} // namespace platform
