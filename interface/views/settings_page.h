// What the person can choose: one page with everything, and one each for what takes room.
#pragma once

#include "views/action_button.h"
#include "views/banner.h"
#include "views/column.h"
#include "views/scroller.h"
#include "views/settings/check_page.h"
#include "views/settings/excluded_section.h"
#include "views/settings/hot_key_section.h"
#include "views/settings/instruction_form.h"
#include "views/settings/instructions_section.h"
#include "views/settings/model_section.h"
#include "views/settings/program_chooser.h"

#include <gtkmm/stack.h>

namespace quillmark {

class SettingsPage : public Gtk::Box {
public:
    explicit SettingsPage(SettingsActions actions);

    void begin();
    // From the outside: the model, or whether the hot key is registered, has changed.
    void show();
    // A sentence that concerns the whole page.
    void warn(const std::string& sentence);

    // Saves the instruction that is being edited.
    void primary();
    void back();

private:
    void go(Gtk::Widget& page, const std::string& title);
    void goHome();
    void edit(std::size_t instruction);
    void saved(const Instruction& instruction);
    void pickProgram();
    void check();

    SettingsActions actions_;
    ActionButton back_, help_;
    Gtk::Label title_;
    Banner warning_;
    Gtk::Stack pages_;
    Scroller all_{Scroller::Holds::page};
    Column sections_{20};
    HotKeySection hotKey_;
    ModelSection model_;
    InstructionsSection instructions_;
    ExcludedSection excluded_;
    InstructionForm form_;
    ProgramChooser programs_;
    CheckPage check_;
    std::size_t edited_ = 0;
};

} // namespace quillmark
