#pragma once

#include "platform/event.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class MenuItem;

// The standard actions of menu items. A chosen action goes to what can perform it: the view with the
// keyboard, the main window, or the application.
enum class Selector {
    orderFrontStandardAboutPanel,
    terminate,
    undo,
    redo,
    cut,
    copy,
    paste,
    selectAll,
    toggleFullScreen,
    performMiniaturize,
    performZoom,
    showHelp,
};

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

// One entry of a menu. A changed title is shown at once.
class MenuItem {
public:
    MenuItem(std::string title, std::optional<std::string> identifier);
    ~MenuItem();
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;

    // A line between two groups of items: no title, no identifier, no action.
    static std::unique_ptr<MenuItem> separatorItem();

    const std::string& title() const;
    void setTitle(std::string_view title);

    // Names the item for relabelling; absent when it has no name.
    const std::optional<std::string>& identifier() const;

    Menu* submenu() const;
    void setSubmenu(std::unique_ptr<Menu> submenu);

    // What choosing the item does; absent for a separator and for an item that only opens a submenu.
    std::optional<Selector> action() const;
    void setAction(Selector action);

    // The shortcut that does the same: a character in lower case or the name of a key ("F11"), with
    // modifiers; Command is the key with which programs copy and paste on this desktop. Empty when none was
    // set.
    const std::string& keyEquivalent() const;
    CGEventFlags keyEquivalentModifierMask() const;
    void setKeyEquivalent(std::string_view key, CGEventFlags modifierMask);

    // Whether something can perform the action now; if not, the item is greyed. Always true without an
    // action.
    bool isEnabled() const;

    class Native;
    Native& native() const;

private:
    std::string title_;
    std::optional<std::string> identifier_;
    bool separator_ = false;
    std::optional<Selector> action_;
    std::string keyEquivalent_;
    CGEventFlags keyEquivalentModifierMask_ = 0;
    std::unique_ptr<Menu> submenu_;
    std::unique_ptr<Native> native_;
};

} // namespace platform
