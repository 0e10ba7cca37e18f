#include "app/main_menu.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

using platform::Menu;
using platform::MenuItem;
using platform::Selector;

namespace {

constexpr auto command = platform::kCGEventFlagMaskCommand;
constexpr auto shift = platform::kCGEventFlagMaskShift;

// One line of a menu; without an identifier it is a separator.
struct Entry {
    std::string_view title;
    std::string_view identifier;
    Selector action{};
    std::string_view key{};
    platform::CGEventFlags modifiers = command;
};

constexpr Entry separator{};

constexpr std::array applicationMenu{
    Entry{"About Quillmark", "nativeAbout", Selector::orderFrontStandardAboutPanel},
    separator,
    Entry{"Quit Quillmark", "nativeQuit", Selector::terminate, "q"},
};

constexpr std::array editMenu{
    Entry{"Undo", "nativeUndo", Selector::undo, "z"},
    Entry{"Redo", "nativeRedo", Selector::redo, "z", command | shift},
    separator,
    Entry{"Cut", "nativeCut", Selector::cut, "x"},
    Entry{"Copy", "nativeCopy", Selector::copy, "c"},
    Entry{"Paste", "nativePaste", Selector::paste, "v"},
    separator,
    Entry{"Select All", "nativeSelectAll", Selector::selectAll, "a"},
};

// Right in both states, as long as the interface sends no label.
constexpr std::array viewMenu{
    Entry{"Toggle Full Screen", "nativeFullScreen", Selector::toggleFullScreen, "F11", 0},
};

constexpr std::array windowMenu{
    Entry{"Minimize", "nativeMinimize", Selector::performMiniaturize},
    Entry{"Zoom", "nativeZoom", Selector::performZoom},
};

constexpr std::array helpMenu{
    Entry{"Quillmark Help", "nativeShowHelp", Selector::showHelp},
};

std::unique_ptr<MenuItem> makeItem(const Entry& entry) {
    if (entry.identifier.empty()) return MenuItem::separatorItem();
    auto item = std::make_unique<MenuItem>(std::string(entry.title), std::string(entry.identifier));
    item->setAction(entry.action);
    if (!entry.key.empty()) item->setKeyEquivalent(entry.key, entry.modifiers);
    return item;
}

void addMenu(Menu& bar, const std::string& title, const char* identifier, std::span<const Entry> entries) {
    auto& opener = bar.addItem(std::make_unique<MenuItem>(title, identifier));
    opener.setSubmenu(std::make_unique<Menu>(title));
    for (const auto& entry : entries)
        opener.submenu()->addItem(makeItem(entry));
}

} // namespace

std::unique_ptr<Menu> makeMainMenu() {
    auto bar = std::make_unique<Menu>("Main Menu");
    addMenu(*bar, "Quillmark", "nativeApplication", applicationMenu);
    addMenu(*bar, "Edit", "nativeEdit", editMenu);
    addMenu(*bar, "View", "nativeView", viewMenu);
    addMenu(*bar, "Window", "nativeWindow", windowMenu);
    addMenu(*bar, "Help", "nativeHelp", helpMenu);
    return bar;
}
