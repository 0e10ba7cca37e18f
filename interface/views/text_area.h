// Where people read and write a text of several lines. The Tab key leaves it.
#pragma once

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
};

} // namespace quillmark
