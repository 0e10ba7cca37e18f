#include "views/settings/general_section.h"

#include "language/check_phrases.h"
#include "language/settings_phrases.h"
#include "views/look.h"

#include <glibmm/main.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/comboboxtext.h>

namespace quillmark {

GeneralSection::GeneralSection(const SettingsActions& actions, const std::function<void()>& check)
    : Section(say(phrases::general)), actions_(actions) {
    addLanguage();
    addLogin();
    addStatusIcon();
    auto* button = Gtk::make_managed<Gtk::Button>(say(phrases::check));
    button->set_halign(Gtk::ALIGN_START);
    button->signal_clicked().connect(check);
    addRow(button);
}

void GeneralSection::addLanguage() {
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    auto* label = Gtk::make_managed<Gtk::Label>(say(phrases::languageOfWindow));
    auto* languages = Gtk::make_managed<Gtk::ComboBoxText>();
    // In the order of ChosenLanguage.
    for (const auto& name : {say(phrases::likeTheDesktop), std::string("English"), std::string("한국어")})
        languages->append(name);
    languages->set_active(static_cast<int>(actions_.settings().language));
    nameFor(*languages, say(phrases::languageOfWindow));
    label->set_mnemonic_widget(*languages);
    row->pack_start(*label, Gtk::PACK_SHRINK);
    row->pack_start(*languages, Gtk::PACK_SHRINK);
    languages->signal_changed().connect([this, languages] {
        const auto chosen = static_cast<ChosenLanguage>(languages->get_active_row_number());
        actions_.change([chosen](Settings& settings) { settings.language = chosen; });
    });
    addRow(row);
}

void GeneralSection::addLogin() {
    auto* button = Gtk::make_managed<Gtk::CheckButton>();
    button->add(*wrappedLabel(say(phrases::startAtLogin)));
    addRow(button);
    auto& problem = addNote();
    addClass(problem, look::underCheck);
    sayIn(problem, {});
    button->set_active(actions_.startsAtLogin());
    button->signal_toggled().connect([this, button, &problem] {
        sayIn(problem, actions_.setStartsAtLogin(button->get_active()).value_or(""));
    });
}

void GeneralSection::addStatusIcon() {
    auto* button = Gtk::make_managed<Gtk::CheckButton>();
    button->add(*wrappedLabel(say(phrases::showStatusIcon)));
    addRow(button);
    button->set_active(actions_.settings().statusIcon);
    auto& note = addNote();
    addClass(note, look::underCheck);
    sayIn(note, actions_.hasPlaceForIcon() ? "" : say(phrases::noPlaceForIcon));
    button->signal_toggled().connect([this, button] {
        actions_.change([on = button->get_active()](Settings& settings) { settings.statusIcon = on; });
    });
}

} // namespace quillmark
