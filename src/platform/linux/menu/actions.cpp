#include "platform/linux/menu/actions.h"

#include "platform/application.h"
#include "platform/linux/menu/about_panel.h"
#include "platform/linux/menu/help_pages.h"
#include "platform/linux/menu/menu_native.h"
#include "platform/linux/window/main_window.h"
#include "platform/linux/window/native_window.h"
#include "platform/main_queue.h"

#include <memory>

namespace platform {
namespace {

// What every toolkit here understands; the menu shows the same keys.
ToolkitKey typedKey(Selector action) {
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
    window.isZoomed() ? native.unmaximize() : native.maximize();
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

ToolkitKey toolkitKey(const MenuItem& item) {
    const std::string& name = item.keyEquivalent();
    if (name.empty()) return {};
    const auto flags = item.keyEquivalentModifierMask();
    unsigned modifiers = 0;
    if (flags & (kCGEventFlagMaskCommand | kCGEventFlagMaskControl)) modifiers |= GDK_CONTROL_MASK;
    if (flags & kCGEventFlagMaskShift) modifiers |= GDK_SHIFT_MASK;
    if (flags & kCGEventFlagMaskAlternate) modifiers |= GDK_MOD1_MASK;
    return {gdk_keyval_from_name(name.c_str()), GdkModifierType(modifiers)};
}

namespace {

// True: the key is used up. Else it goes on to the view.
gboolean keyPressed(GtkAccelGroup*, GObject*, guint, GdkModifierType, gpointer action) {
    const auto selector = static_cast<Selector>(GPOINTER_TO_INT(action));
    if (!canPerform(selector)) return FALSE;
    performSoon(selector);
    return TRUE;
}

void addKeys(GtkAccelGroup* keys, const Menu& menu) {
    for (const auto& item : menu.itemArray()) {
        if (const auto* submenu = item->submenu()) addKeys(keys, *submenu);
        const auto [key, modifiers] = toolkitKey(*item);
        if (key == 0 || !item->action() || isTyped(*item->action())) continue;
        const auto data = GINT_TO_POINTER(static_cast<int>(*item->action()));
        gtk_accel_group_connect(keys, key, modifiers, GTK_ACCEL_VISIBLE,
                                g_cclosure_new(G_CALLBACK(keyPressed), data, nullptr));
    }
}

} // namespace

Glib::RefPtr<Gtk::AccelGroup> makeMenuKeys(const Menu& menu) {
    auto keys = Gtk::AccelGroup::create();
    addKeys(keys->gobj(), menu);
    return keys;
}

} // namespace platform
