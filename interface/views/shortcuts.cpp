#include "views/shortcuts.h"

#include <memory>
#include <utility>

namespace quillmark {

namespace {

using Action = std::function<void()>;

gboolean act(GtkAccelGroup*, GObject*, guint, GdkModifierType, gpointer action) {
    (*static_cast<Action*>(action))();
    return TRUE;
}

void release(gpointer action, GClosure*) {
    const std::unique_ptr<Action> owned(static_cast<Action*>(action));
}

} // namespace

Shortcuts::Shortcuts(Gtk::Window& window) { window.add_accel_group(group_); }

void Shortcuts::set(const Gtk::Widget& page, const std::string& key, std::function<void()> action) {
    if (key.empty()) return;
    if (!uses_.contains(key)) connect(key);
    uses_[key].push_back({&page, std::move(action)});
}

void Shortcuts::forget(const Gtk::Widget& page) {
    for (auto& [key, uses] : uses_)
        std::erase_if(uses, [&](const Use& use) { return use.page == &page; });
}

void Shortcuts::connect(const std::string& key) {
    guint symbol = 0;
    GdkModifierType modifiers{};
    gtk_accelerator_parse(key.c_str(), &symbol, &modifiers);
    if (symbol == 0) return;
    auto action = std::make_unique<Action>([this, key] { pressed(key); });
    gtk_accel_group_connect(group_->gobj(), symbol, modifiers, GTK_ACCEL_VISIBLE,
                            g_cclosure_new(G_CALLBACK(act), action.release(), release));
}

void Shortcuts::pressed(const std::string& key) {
    for (const auto& use : uses_[key])
        if (use.page->get_mapped()) {
            const auto action = use.action; // it may change the keys
            return action();
        }
}

std::string keyName(const std::string& key) {
    guint symbol = 0;
    GdkModifierType modifiers{};
    gtk_accelerator_parse(key.c_str(), &symbol, &modifiers);
    if (symbol == 0) return {};
    std::string name;
    for (const auto& [modifier, word] :
         {std::pair{GDK_SUPER_MASK, "Super+"}, std::pair{GDK_CONTROL_MASK, "Ctrl+"},
          std::pair{GDK_MOD1_MASK, "Alt+"}, std::pair{GDK_SHIFT_MASK, "Shift+"}})
        if ((modifiers & modifier) != 0) name += word;
    return name + symbolName(symbol);
}

std::string symbolName(unsigned symbol) {
    // GTK calls these keys otherwise than most keyboards do.
    if (symbol == GDK_KEY_Return) return "Enter";
    if (symbol == GDK_KEY_Escape) return "Esc";
    return Gtk::AccelGroup::get_label(symbol, {});
}

} // namespace quillmark
