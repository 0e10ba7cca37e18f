// Something that scrolls up and down.
#pragma once

#include <gtkmm/scrolledwindow.h>

namespace quillmark {

class Scroller : public Gtk::ScrolledWindow {
public:
    enum class Holds { page, list, text };

    explicit Scroller(Holds holds) {
        // Not NEVER for a text: with it, a GTK 3 text view asks for the width of its longest line, and never
        // becomes narrower again.
        set_policy(holds == Holds::text ? Gtk::POLICY_EXTERNAL : Gtk::POLICY_NEVER, Gtk::POLICY_AUTOMATIC);
        if (holds != Holds::page) set_shadow_type(Gtk::SHADOW_IN);
        // Only what is in it takes the keyboard.
        set_can_focus(false);
    }
};

} // namespace quillmark
