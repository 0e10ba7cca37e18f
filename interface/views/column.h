// A column of rows no wider than a person likes to read, however wide the window is.
#pragma once

#include <gtkmm/box.h>

namespace quillmark {

class Column : public Gtk::Box {
public:
    explicit Column(int spacing) : Gtk::Box(Gtk::ORIENTATION_VERTICAL, spacing) {}

protected:
    void on_size_allocate(Gtk::Allocation& allocation) override;
};

} // namespace quillmark
