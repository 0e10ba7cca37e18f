// Which language model has the person's texts.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

#include <gtkmm/checkbutton.h>
#include <gtkmm/entry.h>
#include <gtkmm/expander.h>
#include <gtkmm/grid.h>
#include <gtkmm/radiobutton.h>

namespace quillmark {

class ModelSection : public Section {
public:
    explicit ModelSection(const SettingsActions& actions);

    // What is known of the model has changed.
    void show();

private:
    void showChoice();
    void addEntry(int row, const std::string& name, Gtk::Entry& entry);
    void choose(const SettingsActions::ServerChoice& choice);
    void chooseTyped();

    const SettingsActions& actions_;
    Gtk::Label& status_;
    Gtk::CheckButton consent_;
    Gtk::RadioButton found_, chosen_;
    Gtk::Grid form_;
    Gtk::Entry address_, model_, key_;
    Gtk::Button use_, lookAgain_;
    Gtk::Label& problem_;
    Gtk::Expander others_;
    Gtk::Label* otherServers_;
    bool showing_ = false;
};

} // namespace quillmark
