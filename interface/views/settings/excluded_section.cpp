#include "views/settings/excluded_section.h"

#include "language/settings_phrases.h"
#include "views/icon_button.h"
#include "views/look.h"

#include <glibmm/main.h>

#include <algorithm>

namespace quillmark {

ExcludedSection::ExcludedSection(const SettingsActions& actions, std::function<void()> add)
    : Section(say(phrases::excludedPrograms)), actions_(actions), add_(say(phrases::add)) {
    addNote(say(phrases::excludedExplained));
    list_.set_selection_mode(Gtk::SELECTION_NONE);
    nameFor(list_, say(phrases::excludedPrograms));
    nameFor(add_, say(phrases::excludedPrograms) + ": " + say(phrases::add));
    add_.set_halign(Gtk::ALIGN_START);
    add_.signal_clicked().connect(add);
    pack_start(list_, Gtk::PACK_SHRINK);
    pack_start(add_, Gtk::PACK_SHRINK);
    show();
}

void ExcludedSection::show() {
    for (auto* row : list_.get_children())
        list_.remove(*row);
    const auto& excluded = actions_.settings().excludedApps;
    list_.set_visible(!excluded.empty());
    list_.set_no_show_all(excluded.empty());
    if (excluded.empty()) return;
    auto known = actions_.installedPrograms();
    std::ranges::copy(actions_.recentPrograms(), std::back_inserter(known));
    for (const auto& id : excluded)
        addProgram(id, known);
    list_.show_all_children();
}

void ExcludedSection::addProgram(const std::string& id, const std::vector<ProgramName>& known) {
    const auto found = std::ranges::find(known, id, &ProgramName::id);
    const auto name = found == known.end() || found->name.empty() ? id : found->name;
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    row->set_margin_start(8);
    auto* label = Gtk::make_managed<Gtk::Label>(name, Gtk::ALIGN_START);
    label->set_ellipsize(Pango::ELLIPSIZE_END);
    auto* remove = Gtk::make_managed<IconButton>("list-remove-symbolic", say(phrases::remove, {name}));
    // Later: the button goes with its row.
    remove->signal_clicked().connect([this, id] {
        Glib::signal_idle().connect_once([this, id, life = life()] {
            if (life.expired()) return;
            actions_.change([&](Settings& settings) { std::erase(settings.excludedApps, id); });
            show();
            add_.grab_focus();
        });
    });
    row->pack_start(*label, Gtk::PACK_EXPAND_WIDGET);
    row->pack_end(*remove, Gtk::PACK_SHRINK);
    list_.append(*row);
    row->get_parent()->set_can_focus(false);
    nameFor(*row->get_parent(), name);
}

} // namespace quillmark
