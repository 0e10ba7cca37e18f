#include "views/source_line.h"

#include "rewriting/describe.h"
#include "views/look.h"

namespace quillmark {

SourceLine::SourceLine() : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 2) {
    addClass(place_, look::heading);
    for (auto* label : {&place_, &extent_}) {
        label->set_xalign(0);
        pack_start(*label, Gtk::PACK_SHRINK);
    }
    place_.set_ellipsize(Pango::ELLIPSIZE_END);
    extent_.set_line_wrap(); // what limits there are must not be cut off
    addClass(extent_, look::dim);
}

void SourceLine::show(const Capture& capture) {
    auto extent = extentOf(capture);
    for (const auto& limit : limitsOf(capture))
        extent += " · ⚠ " + limit;
    place_.set_text(placeOf(capture));
    place_.set_tooltip_text(placeOf(capture));
    extent_.set_text(extent);
}

} // namespace quillmark
