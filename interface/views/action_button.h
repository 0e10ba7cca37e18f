// A button that says its key under its name.
#pragma once

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/togglebutton.h>

#include <string>

namespace quillmark {

// Button is Gtk::Button or a kind of it.
template <class Button>
class WithKey : public Button {
public:
    explicit WithKey(const std::string& name = {}, const std::string& key = {});

    void label(const std::string& name, const std::string& key);

private:
    Gtk::Box column_{Gtk::ORIENTATION_VERTICAL};
    Gtk::Label name_, key_;
};

using ActionButton = WithKey<Gtk::Button>;
using ActionToggle = WithKey<Gtk::ToggleButton>;

} // namespace quillmark
