#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class MenuItem;

// A menu: the menu bar, or what opens from one of its items. Owned by its item; the menu bar by the
// application. Main thread only.
class Menu {
public:
    explicit Menu(std::string title);
    ~Menu();
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    const std::string& title() const;
    void setTitle(std::string_view title);

    MenuItem& addItem(std::unique_ptr<MenuItem> item);
    const std::vector<std::unique_ptr<MenuItem>>& itemArray() const;

private:
    std::string title_;
    std::vector<std::unique_ptr<MenuItem>> items_;
};

// One entry of a menu. A title that changes shows at once.
class MenuItem {
public:
    MenuItem(std::string title, std::optional<std::string> identifier);
    ~MenuItem();
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;

    const std::string& title() const;
    void setTitle(std::string_view title);

    // Names the item for relabelling; absent when it has no name.
    const std::optional<std::string>& identifier() const;

    Menu* submenu() const;
    void setSubmenu(std::unique_ptr<Menu> submenu);

    class Native;
    Native& native() const;

private:
    std::string title_;
    std::optional<std::string> identifier_;
    std::unique_ptr<Menu> submenu_;
    std::unique_ptr<Native> native_;
};

} // namespace platform
