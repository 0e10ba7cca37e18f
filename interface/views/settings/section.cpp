#include "views/settings/section.h"

#include "views/look.h"

namespace quillmark {

Section::Section(const std::string& heading) : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 6) {
    auto* label = wrappedLabel(heading);
    addClass(*label, look::heading);
    pack_start(*label, Gtk::PACK_SHRINK);
    get_accessible()->set_role(Atk::ROLE_PANEL);
    nameFor(*this, heading);
}

Gtk::Label& Section::addNote(const std::string& text) {
    auto* label = wrappedLabel(text);
    addClass(*label, look::dim);
    pack_start(*label, Gtk::PACK_SHRINK);
    return *label;
}

void sayIn(Gtk::Label& label, const std::string& text) {
    label.set_text(text);
    label.set_visible(!text.empty());
    label.set_no_show_all(text.empty());
}

Gtk::Label* wrappedLabel(const std::string& text) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_xalign(0);
    label->set_line_wrap();
    label->set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    // Else a label asks for the width of its longest line, and a narrow window for a scroll bar.
    label->set_width_chars(1);
    label->set_max_width_chars(1);
    label->set_hexpand();
    return label;
}

} // namespace quillmark
