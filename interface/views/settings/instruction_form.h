// One instruction, to be written or changed.
#pragma once

#include "settings/instruction.h"
#include "views/column.h"
#include "views/scroller.h"
#include "views/settings/key_recorder.h"
#include "views/text_area.h"

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <functional>
#include <vector>

namespace quillmark {

class InstructionForm : public Scroller {
public:
    explicit InstructionForm(std::function<void(const Instruction&)> saved);

    // The others are those whose keys it cannot have.
    void edit(const Instruction& instruction, std::vector<Instruction> others);
    // As its button does.
    void save();

private:
    void addField(const std::string& name, Gtk::Widget& widget, Gtk::Widget& field);
    void keyPressed(const GdkEventKey& event);
    void showKey();

    std::function<void(const Instruction&)> saved_;
    Column column_{6};
    Gtk::Entry name_, question_;
    TextArea prompt_;
    KeyRecorder key_;
    Gtk::Button noKey_;
    Gtk::CheckButton corrects_;
    Gtk::Label problem_;
    Instruction instruction_;
    std::vector<Instruction> others_;
};

} // namespace quillmark
