// The keys of the window. Keys are written as GTK writes accelerators, such as "<Control>Return".
#pragma once

#include <gtkmm/accelgroup.h>
#include <gtkmm/window.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quillmark {

// They work under every keyboard layout, before the focused widget sees the key.
class Shortcuts {
public:
    explicit Shortcuts(Gtk::Window& window);

    // As long as that page is the one on the screen. Pages may use the same key.
    void set(const Gtk::Widget& page, const std::string& key, std::function<void()> action);
    // Takes back all of that page's.
    void forget(const Gtk::Widget& page);

private:
    struct Use {
        const Gtk::Widget* page;
        std::function<void()> action;
    };

    void connect(const std::string& key);
    void pressed(const std::string& key);

    Glib::RefPtr<Gtk::AccelGroup> group_ = Gtk::AccelGroup::create();
    std::map<std::string, std::vector<Use>> uses_;
};

// "Ctrl+Enter"; empty for no key.
std::string keyName(const std::string& key);
// Of a key alone, by its symbol.
std::string symbolName(unsigned symbol);

} // namespace quillmark
