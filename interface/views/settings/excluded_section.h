// The programs that are never read.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

#include <gtkmm/button.h>
#include <gtkmm/listbox.h>

namespace quillmark {

class ExcludedSection : public Section {
public:
    // `add` lets the person pick another one.
    ExcludedSection(const SettingsActions& actions, std::function<void()> add);

    void show();

private:
    void addProgram(const std::string& id, const std::vector<ProgramName>& known);

    const SettingsActions& actions_;
    Gtk::ListBox list_;
    Gtk::Button add_;
};

} // namespace quillmark
