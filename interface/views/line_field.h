// One line to write in. Unlike an entry of GTK 3 it leaves the X server's selection alone, see TextArea.
#pragma once

#include "views/scroller.h"
#include "views/text_area.h"

#include <string>

namespace quillmark {

class LineField : public Scroller {
public:
    LineField();

    // Line breaks that were pasted are blanks.
    std::string text() const;
    void setText(const std::string& text);
    // Gives it the keyboard, with all of its text selected.
    void begin();
    Gtk::TextView& view() { return view_; }

    // The Enter key was pressed in it.
    sigc::signal<void> entered;

private:
    bool onKey(GdkEventKey* event);

    TextArea view_;
};

} // namespace quillmark
