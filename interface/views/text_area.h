// Where people read and write a text of several lines. The Tab key leaves it. What is selected in it does not
// become the X server's selection (PRIMARY): the program that a text came from would lose its own then, as
// GTK 3 programs do, and with it the place where the rewrite belongs.
#pragma once

#include <gtkmm/clipboard.h>
#include <gtkmm/textview.h>

namespace quillmark {

class TextArea : public Gtk::TextView {
public:
    TextArea() {
        set_wrap_mode(Gtk::WRAP_WORD_CHAR);
        set_accepts_tab(false);
        set_left_margin(8);
        set_right_margin(8);
        set_top_margin(6);
        set_bottom_margin(6);
    }

protected:
    // GTK connects the two when it realizes the view, and parts them again when it unrealizes it.
    void on_realize() override {
        Gtk::TextView::on_realize();
        get_buffer()->remove_selection_clipboard(get_clipboard("PRIMARY"));
    }
    void on_unrealize() override {
        get_buffer()->add_selection_clipboard(get_clipboard("PRIMARY"));
        Gtk::TextView::on_unrealize();
    }
};

} // namespace quillmark
