#include "views/panes.h"

#include "language/main_phrases.h"
#include "views/text_size.h"

#include <glibmm/main.h>

#include <algorithm>

namespace quillmark {

Panes::Panes()
    : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL, 8), original(say(phrases::original), MarkedText::Mark::removed),
      rewritten(say(phrases::rewritten), MarkedText::Mark::added) {
    set_homogeneous();
    for (auto* pane : {&original, &rewritten}) {
        pane->show_all();
        pane->set_no_show_all();
        pack_start(*pane, Gtk::PACK_EXPAND_WIDGET);
    }
}

Panes::Arrangement Panes::fitting(int width, int height) {
    constexpr int lineLength = 36;  // characters that a line should have
    constexpr int fewestLines = 11; // of both texts and their headings together
    const auto [character, line] = textSize(*this);
    if (width >= 2 * lineLength * character) return Arrangement::beside;
    return height >= fewestLines * line ? Arrangement::above : Arrangement::single;
}

// One text is enough: it is what a low window shows.
void Panes::get_preferred_height_vfunc(int& least, int& natural) const {
    Gtk::Box::get_preferred_height_vfunc(least, natural);
    int ofOne = 0;
    (rewritten.get_visible() ? rewritten : original).get_preferred_height(least, ofOne);
}

void Panes::on_size_allocate(Gtk::Allocation& allocation) {
    Gtk::Box::on_size_allocate(allocation);
    wanted_ = fitting(allocation.get_width(), allocation.get_height());
    if (wanted_ == arrangement_) return;
    // Not from inside: the toolkit is still giving out places.
    Glib::signal_idle().connect_once(sigc::mem_fun(*this, &Panes::arrange), Glib::PRIORITY_HIGH_IDLE);
}

void Panes::arrange() {
    if (std::exchange(arrangement_, wanted_) == wanted_) return;
    set_orientation(wanted_ == Arrangement::beside ? Gtk::ORIENTATION_HORIZONTAL : Gtk::ORIENTATION_VERTICAL);
    original.set_visible(wanted_ != Arrangement::single);
    rewritten.show();
    single.emit(wanted_ == Arrangement::single);
}

void Panes::swap() {
    if (arrangement_ != Arrangement::single) return;
    auto& now = original.get_visible() ? rewritten : original;
    auto& before = original.get_visible() ? original : rewritten;
    now.show();
    before.hide();
    now.view().grab_focus();
}

int Panes::missingHeight() const {
    const int both = original.missingHeight() + rewritten.missingHeight();
    return arrangement_ == Arrangement::above ? both
                                              : std::max(original.missingHeight(), rewritten.missingHeight());
}

} // namespace quillmark
