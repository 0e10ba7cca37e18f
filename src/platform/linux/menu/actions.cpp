#include "platform/linux/menu/actions.h"

#include "platform/application.h"
#include "platform/linux/menu/about_panel.h"
#include "platform/linux/menu/help_pages.h"
#include "platform/linux/menu/shortcuts.h"
#include "platform/linux/window/main_window.h"
#include "platform/linux/window/native_window.h"
#include "platform/main_queue.h"

namespace platform {
namespace {

// The keys that toolkits on this desktop agree on; the menu shows the same ones. Key 0 for an action that is
// not typed.
Shortcut typedKey(Selector action) {
    using enum Selector;
    constexpr auto control = GDK_CONTROL_MASK;
    switch (action) {
    case undo:
        return {GDK_KEY_z, control};
    case redo:
        return {GDK_KEY_z, GdkModifierType(control | GDK_SHIFT_MASK)};
    case cut:
        return {GDK_KEY_x, control};
    case copy:
        return {GDK_KEY_c, control};
    case paste:
        return {GDK_KEY_v, control};
    case selectAll:
        return {GDK_KEY_a, control};
    default:
        return {};
    }
}

void toggleFullScreen(Window& window) { window.setStyleMask(window.styleMask() ^ WindowStyleMaskFullScreen); }

void toggleZoom(Window& window) {
    auto& native = window.native().window;
    if (window.isZoomed())
        native.unmaximize();
    else
        native.maximize();
}

void performNow(Selector action) {
    const auto window = mainWindow();
    if (!canPerform(action)) return;
    switch (action) {
    case Selector::terminate:
        return Application::sharedApplication().terminate();
    case Selector::orderFrontStandardAboutPanel:
        return showAboutPanel(window ? &window->native().window : nullptr);
    case Selector::showHelp:
        return showHelpPages();
    case Selector::toggleFullScreen:
        return toggleFullScreen(*window);
    case Selector::performMiniaturize:
        return window->miniaturize();
    case Selector::performZoom:
        return toggleZoom(*window);
    default:
        const auto [key, modifiers] = typedKey(action);
        return window->native().view.typeKey(key, modifiers);
    }
}

} // namespace

bool isTyped(Selector action) { return typedKey(action).key != 0; }

bool canPerform(Selector action) {
    if (action == Selector::terminate || action == Selector::orderFrontStandardAboutPanel) return true;
    if (action == Selector::showHelp) return hasHelpPages();
    const auto window = mainWindow();
    if (!window) return false;
    if (isTyped(action)) return window->native().view.takesKeys();
    const bool fullScreen = (window->styleMask() & WindowStyleMaskFullScreen) != 0;
    return action == Selector::toggleFullScreen || !fullScreen; // full screen is left first
}

void performSoon(Selector action) {
    MainQueue::async([action] { performNow(action); });
}

} // namespace platform
