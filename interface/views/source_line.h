// Where the text came from, and what its reader should know of it.
#pragma once

#include "client/desktop.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

namespace quillmark {

class SourceLine : public Gtk::Box {
public:
    SourceLine();

    void show(const Capture& capture);

private:
    Gtk::Label place_, extent_;
};

} // namespace quillmark
