#include "views/instruction_row.h"

#include "language/main_phrases.h"
#include "views/look.h"

#include <glibmm/main.h>

#include <utility>

namespace quillmark {

InstructionRow::InstructionRow(Chosen chosen)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 6), chosen_(std::move(chosen)), go_(say(phrases::go)) {
    nameFor(row_, say(phrases::instructions));
    question_.pack_start(asked_, Gtk::PACK_SHRINK);
    question_.pack_start(answer_, Gtk::PACK_EXPAND_WIDGET);
    question_.pack_start(go_, Gtk::PACK_SHRINK);
    answer_.entered.connect([this] { answered(); });
    go_.signal_clicked().connect([this] { answered(); });
    pack_start(row_, Gtk::PACK_SHRINK);
    pack_start(question_, Gtk::PACK_SHRINK);
    question_.show_all_children();
    question_.set_no_show_all();
}

void InstructionRow::setInstructions(std::vector<Instruction> instructions) {
    instructions_ = std::move(instructions);
    answers_.resize(instructions_.size());
    buttons_.clear();
    row_.clear();
    question_.hide();
    for (std::size_t i = 0; i < instructions_.size(); ++i) {
        auto* button = Gtk::make_managed<ActionToggle>(instructions_[i].name, instructions_[i].key);
        button->signal_clicked().connect([this, i] {
            if (showing_) return;
            show(inUse_, true); // a click has pressed the button in, but it may only ask its question yet
            choose(i);
        });
        button->show();
        row_.add(*button);
        buttons_.push_back(button);
    }
}

void InstructionRow::show(Instruction inUse, bool usable) {
    inUse_ = std::move(inUse);
    showing_ = true;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        buttons_[i]->set_active(instructions_[i] == inUse_);
        buttons_[i]->set_sensitive(usable);
    }
    showing_ = false;
}

void InstructionRow::choose(std::size_t index) {
    if (index >= instructions_.size() || !buttons_[index]->get_sensitive()) return;
    const auto& instruction = instructions_[index];
    if (instruction.question.empty()) {
        question_.hide();
        return chosen_(instruction, {});
    }
    asking_ = index;
    asked_.set_text(instruction.question);
    nameFor(answer_.view(), instruction.question);
    answer_.setText(answers_[index]);
    question_.show();
    answer_.begin();
}

bool InstructionRow::closeQuestion() {
    const bool open = question_.get_visible();
    question_.hide();
    return open;
}

void InstructionRow::answered() {
    const std::string answer = answer_.text();
    if (answer.find_first_not_of(' ') == std::string::npos) return;
    answers_[asking_] = answer;
    question_.hide();
    chosen_(instructions_[asking_], answer);
}

} // namespace quillmark
