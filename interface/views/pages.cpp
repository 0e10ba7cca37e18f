#include "views/pages.h"

#include <glibmm/main.h>

#include <algorithm>

namespace quillmark {

void Pages::get_preferred_height_for_width_vfunc(int width, int& least, int& natural) const {
    Gtk::Stack::get_preferred_height_for_width_vfunc(std::max(width, get_allocated_width()), least, natural);
}

void Pages::on_size_allocate(Gtk::Allocation& allocation) {
    const bool otherWidth = allocation.get_width() != get_allocated_width();
    Gtk::Stack::on_size_allocate(allocation);
    // Not from inside: the toolkit is still giving out places.
    if (otherWidth)
        Glib::signal_idle().connect_once(sigc::mem_fun(*this, &Gtk::Widget::queue_resize),
                                         Glib::PRIORITY_HIGH_IDLE);
}

} // namespace quillmark
