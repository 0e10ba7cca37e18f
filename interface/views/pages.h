// One page at a time, as high as the page must be at the width that it has. A window of GTK 3 alone would
// have to be as high as the page at its narrowest, where every text has many lines.
#pragma once

#include <gtkmm/stack.h>

namespace quillmark {

class Pages : public Gtk::Stack {
protected:
    void get_preferred_height_for_width_vfunc(int width, int& least, int& natural) const override;
    void on_size_allocate(Gtk::Allocation& allocation) override;
};

} // namespace quillmark
