// The two texts: beside each other where there is room, else one above the other, else one at a time.
#pragma once

#include "views/text_pane.h"

#include <gtkmm/box.h>

namespace quillmark {

class Panes : public Gtk::Box {
public:
    Panes();

    TextPane original, rewritten;

    // Where only one has room: shows the other.
    void swap();
    // Only one has room.
    sigc::signal<void, bool> single;

    // How much taller they would have to be to show all of both texts.
    int missingHeight() const;

protected:
    void get_preferred_height_vfunc(int& least, int& natural) const override;
    void on_size_allocate(Gtk::Allocation& allocation) override;

private:
    enum class Arrangement { none, beside, above, single };

    Arrangement fitting(int width, int height);
    void arrange();

    Arrangement arrangement_ = Arrangement::none;
    Arrangement wanted_ = Arrangement::none;
};

} // namespace quillmark
