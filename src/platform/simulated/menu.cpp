#include "platform/menu.h"

#include "platform/application.h"
#include "platform/simulated/world.h"

namespace platform {

using simulated::World;

// Nothing is drawn, so an item needs nothing of the desktop's own.
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

std::unique_ptr<MenuItem> MenuItem::separatorItem() {
    auto item = std::make_unique<MenuItem>("", std::nullopt);
    item->separator_ = true;
    return item;
}

std::optional<Selector> MenuItem::action() const { return action_; }
void MenuItem::setAction(Selector action) { action_ = action; }

const std::string& MenuItem::keyEquivalent() const { return keyEquivalent_; }
CGEventFlags MenuItem::keyEquivalentModifierMask() const { return keyEquivalentModifierMask_; }
void MenuItem::setKeyEquivalent(std::string_view key, CGEventFlags modifierMask) {
    keyEquivalent_ = key;
    keyEquivalentModifierMask_ = modifierMask;
}

bool MenuItem::isEnabled() const { return !action_ || World::current().canPerform(*action_); }

} // namespace platform

namespace simulated {

namespace {

platform::MenuItem* find(const platform::Menu& menu, std::string_view identifier) {
    for (const auto& item : menu.itemArray()) {
        if (item->identifier() == identifier) return item.get();
        if (!item->submenu()) continue;
        if (auto* found = find(*item->submenu(), identifier)) return found;
    }
    return nullptr;
}

} // namespace

platform::MenuItem* World::menuItem(std::string_view identifier) const {
    return mainMenu ? find(*mainMenu, identifier) : nullptr;
}

bool World::canPerform(platform::Selector action) const {
    using enum platform::Selector;
    switch (action) {
    case terminate:
    case orderFrontStandardAboutPanel:
        return true;
    case undo:
    case redo:
    case cut:
    case copy:
    case paste:
    case selectAll:
        return interfaceTakesKeys;
    case toggleFullScreen:
    case performMiniaturize:
    case performZoom:
        return !hostWindows.empty();
    case showHelp:
        return false;
    }
    return false;
}

bool World::userChooses(std::string_view identifier) {
    const auto* item = menuItem(identifier);
    if (item == nullptr || !item->action() || !item->isEnabled()) return false;
    clock.async([this, action = *item->action()] { perform(action); });
    return true;
}

void World::perform(platform::Selector action) {
    using enum platform::Selector;
    if (action == terminate) return platform::Application::sharedApplication().terminate();
    performedActions.push_back(action);
    if (hostWindows.empty()) return;
    auto& window = *hostWindows.front();
    if (action == performMiniaturize) window.miniaturize();
    if (action == performZoom) window.native().zoomed = !window.native().zoomed;
    if (action != toggleFullScreen) return;
    if (window.styleMask() & platform::WindowStyleMaskFullScreen)
        window.native().userExitsFullScreen();
    else
        window.native().userEntersFullScreen();
}

} // namespace simulated
