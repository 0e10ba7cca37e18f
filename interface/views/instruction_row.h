// The instructions as a row of buttons, and the question that some of them ask first.
#pragma once

#include "settings/instruction.h"
#include "views/action_button.h"
#include "views/line_field.h"
#include "views/wrap_row.h"

#include <functional>
#include <vector>

namespace quillmark {

class InstructionRow : public Gtk::Box {
public:
    using Chosen = std::function<void(const Instruction&, const std::string& answer)>;

    explicit InstructionRow(Chosen chosen);

    void setInstructions(std::vector<Instruction> instructions);
    // The one in use stands out.
    void show(Instruction inUse, bool usable);
    // As if its button had been pressed.
    void choose(std::size_t index);

    // Closes an open question; false when there is none.
    bool closeQuestion();

private:
    void answered();

    Chosen chosen_;
    std::vector<Instruction> instructions_;
    std::vector<ActionToggle*> buttons_;
    WrapRow row_{4};
    Gtk::Box question_{Gtk::ORIENTATION_HORIZONTAL, 6};
    Gtk::Label asked_;
    LineField answer_;
    Gtk::Button go_;
    std::size_t asking_ = 0;           // the instruction whose question is open
    std::vector<std::string> answers_; // the latest to each instruction, in memory only
    Instruction inUse_;
    bool showing_ = false;
};

} // namespace quillmark
