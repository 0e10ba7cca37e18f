#include "views/settings/program_chooser.h"

#include "language/settings_phrases.h"
#include "views/look.h"

#include <gtkmm/label.h>

#include <algorithm>
#include <utility>

namespace quillmark {

ProgramChooser::ProgramChooser(std::function<void(const ProgramName&)> chosen,
                               const std::function<void()>& back)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 8), chosen_(std::move(chosen)) {
    search_.set_placeholder_text(say(phrases::searchProgram));
    nameFor(search_, say(phrases::searchProgram));
    nameFor(list_, say(phrases::excludedPrograms));
    list_.set_activate_on_single_click();
    list_.set_filter_func([this](Gtk::ListBoxRow* row) { return matches(row); });
    list_.signal_row_activated().connect([this](Gtk::ListBoxRow* row) {
        const auto program = programs_.at(static_cast<std::size_t>(row->get_index()));
        chosen_(program);
    });
    search_.signal_search_changed().connect([this] { list_.invalidate_filter(); });
    search_.signal_activate().connect([this] {
        for (int i = 0; auto* row = list_.get_row_at_index(i); ++i)
            if (matches(row)) return chosen_(ProgramName(programs_.at(static_cast<std::size_t>(i))));
    });
    search_.signal_stop_search().connect(back); // else the search keeps Esc to itself
    scroller_.add(list_);
    pack_start(search_, Gtk::PACK_SHRINK);
    pack_start(scroller_, Gtk::PACK_EXPAND_WIDGET);
    show_all();
}

void ProgramChooser::show(std::vector<ProgramName> recent, const std::vector<ProgramName>& installed) {
    for (auto* row : list_.get_children())
        list_.remove(*row);
    programs_.clear();
    for (const auto& program : recent)
        addProgram(program, say(phrases::usedLately));
    for (const auto& program : installed)
        if (std::ranges::find(recent, program.id, &ProgramName::id) == recent.end()) addProgram(program, {});
    list_.show_all_children();
    search_.set_text("");
    search_.grab_focus();
}

void ProgramChooser::addProgram(const ProgramName& program, const std::string& remark) {
    const auto name = program.name.empty() ? program.id : program.name;
    auto* label =
        Gtk::make_managed<Gtk::Label>(remark.empty() ? name : name + " · " + remark, Gtk::ALIGN_START);
    label->set_ellipsize(Pango::ELLIPSIZE_END);
    label->set_margin_start(6);
    label->set_margin_top(4);
    label->set_margin_bottom(4);
    programs_.push_back(program);
    list_.append(*label);
    nameFor(*label->get_parent(), label->get_text()); // the row
}

bool ProgramChooser::matches(Gtk::ListBoxRow* row) const {
    const auto& program = programs_.at(static_cast<std::size_t>(row->get_index()));
    const auto wanted = search_.get_text().casefold();
    return Glib::ustring(program.name).casefold().find(wanted) != Glib::ustring::npos ||
           Glib::ustring(program.id).casefold().find(wanted) != Glib::ustring::npos;
}

} // namespace quillmark
