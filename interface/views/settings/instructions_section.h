// The instructions in their order: the first is what the hot key does.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

#include <gtkmm/button.h>
#include <gtkmm/listbox.h>

namespace quillmark {

class InstructionsSection : public Section {
public:
    // `edit` lets the person change one of them; the index behind the last stands for a new one.
    InstructionsSection(const SettingsActions& actions, std::function<void(std::size_t)> edit);

    void show();

private:
    // What the buttons of a row do, once the row may go.
    using Change = std::function<void(std::vector<Instruction>&)>;

    void addInstruction(std::size_t index, const std::vector<Instruction>& all);
    void addButton(Gtk::Box& row, const char* icon, const std::string& name, bool usable,
                   std::function<void()> pressed);
    void change(const Change& how, std::size_t focus);

    const SettingsActions& actions_;
    std::function<void(std::size_t)> edit_;
    Gtk::ListBox list_;
    Gtk::Button add_, standard_;
};

} // namespace quillmark
