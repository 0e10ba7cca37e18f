#include "platform/linux/menu/shortcuts.h"

#include "platform/linux/menu/actions.h"

namespace platform {
namespace {

// TRUE when the key is used up; otherwise it goes on to the view.
gboolean shortcutPressed(GtkAccelGroup*, GObject*, guint, GdkModifierType, gpointer action) {
    const auto selector = static_cast<Selector>(GPOINTER_TO_INT(action));
    if (!canPerform(selector)) return FALSE;
    performSoon(selector);
    return TRUE;
}

void addShortcuts(GtkAccelGroup* group, const Menu& menu) {
    for (const auto& item : menu.itemArray()) {
        if (const auto* submenu = item->submenu()) addShortcuts(group, *submenu);
        const auto [key, modifiers] = shortcutOf(*item);
        if (key == 0 || !item->action() || isTyped(*item->action())) continue;
        const auto data = GINT_TO_POINTER(static_cast<int>(*item->action()));
        gtk_accel_group_connect(group, key, modifiers, GTK_ACCEL_VISIBLE,
                                g_cclosure_new(G_CALLBACK(shortcutPressed), data, nullptr));
    }
}

} // namespace

Shortcut shortcutOf(const MenuItem& item) {
    const std::string& name = item.keyEquivalent();
    if (name.empty()) return {};
    const auto flags = item.keyEquivalentModifierMask();
    unsigned modifiers = 0;
    if (flags & (kCGEventFlagMaskCommand | kCGEventFlagMaskControl)) modifiers |= GDK_CONTROL_MASK;
    if (flags & kCGEventFlagMaskShift) modifiers |= GDK_SHIFT_MASK;
    if (flags & kCGEventFlagMaskAlternate) modifiers |= GDK_MOD1_MASK;
    return {gdk_keyval_from_name(name.c_str()), GdkModifierType(modifiers)};
}

Glib::RefPtr<Gtk::AccelGroup> makeShortcuts(const Menu& menu) {
    auto group = Gtk::AccelGroup::create();
    addShortcuts(group->gobj(), menu);
    return group;
}

} // namespace platform
