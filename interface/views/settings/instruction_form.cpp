#include "views/settings/instruction_form.h"

#include "language/settings_phrases.h"
#include "views/action_button.h"
#include "views/keys.h"
#include "views/look.h"
#include "views/settings/section.h"
#include "views/shortcuts.h"

#include <utility>

namespace quillmark {

namespace {

// A letter with Shift or nothing is how people write.
bool types(unsigned symbol, Gdk::ModifierType modifiers) {
    const bool held =
        (modifiers & (Gdk::CONTROL_MASK | Gdk::MOD1_MASK | Gdk::SUPER_MASK)) != Gdk::ModifierType();
    const bool functionKey = symbol >= GDK_KEY_F1 && symbol <= GDK_KEY_F35;
    return !held && !functionKey;
}

} // namespace

InstructionForm::InstructionForm(std::function<void(const Instruction&)> saved)
    : Scroller(Holds::page), saved_(std::move(saved)),
      key_([this](const GdkEventKey& event) { keyPressed(event); }) {
    auto* promptFrame = Gtk::make_managed<Scroller>(Scroller::Holds::text);
    promptFrame->set_min_content_height(90);
    promptFrame->add(prompt_);
    addField(say(phrases::instructionName), name_, name_);
    addField(say(phrases::instructionPrompt), *promptFrame, prompt_);
    addField(say(phrases::instructionQuestion), question_, question_);

    auto* keys = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    noKey_.set_label(say(phrases::removeKey));
    noKey_.signal_clicked().connect([this] {
        instruction_.key.clear();
        showKey();
    });
    keys->pack_start(key_, Gtk::PACK_SHRINK);
    keys->pack_start(noKey_, Gtk::PACK_SHRINK);
    addField(say(phrases::instructionKey), *keys, key_);

    corrects_.add(*wrappedLabel(say(phrases::correctsSpelling)));
    auto* saving = Gtk::make_managed<ActionButton>(say(phrases::save), keys::primary);
    saving->set_halign(Gtk::ALIGN_END);
    saving->get_style_context()->add_class("suggested-action");
    saving->signal_clicked().connect([this] { save(); });
    problem_.set_xalign(0);
    problem_.set_line_wrap();
    for (Gtk::Widget* row : std::initializer_list<Gtk::Widget*>{&corrects_, &problem_, saving})
        column_.pack_start(*row, Gtk::PACK_SHRINK);
    add(column_);
    column_.set_focus_vadjustment(get_vadjustment());
    show_all();
}

void InstructionForm::addField(const std::string& name, Gtk::Widget& widget, Gtk::Widget& field) {
    auto* label = wrappedLabel(name);
    label->set_mnemonic_widget(field);
    nameFor(field, name);
    column_.pack_start(*label, Gtk::PACK_SHRINK);
    column_.pack_start(widget, Gtk::PACK_SHRINK);
}

void InstructionForm::edit(const Instruction& instruction, std::vector<Instruction> others) {
    instruction_ = instruction;
    others_ = std::move(others);
    name_.set_text(instruction.name);
    prompt_.get_buffer()->set_text(instruction.prompt);
    question_.set_text(instruction.question);
    corrects_.set_active(instruction.corrects);
    sayIn(problem_, {});
    showKey();
    name_.grab_focus();
}

void InstructionForm::showKey() {
    const auto name = instruction_.key.empty() ? say(phrases::noKey) : keyName(instruction_.key);
    key_.show(name, say(phrases::changeKey, {name}));
    noKey_.set_sensitive(!instruction_.key.empty());
}

void InstructionForm::keyPressed(const GdkEventKey& event) {
    const auto symbol = gdk_keyval_to_lower(event.keyval);
    const auto modifiers = Gdk::ModifierType(event.state) & Gtk::AccelGroup::get_default_mod_mask();
    const std::string key = Gtk::AccelGroup::name(symbol, modifiers);
    if (types(symbol, modifiers)) return sayIn(problem_, say(phrases::keyTypes, {keyName(key)}));
    if (keys::isTaken(key)) return sayIn(problem_, say(phrases::keyOfWindow, {keyName(key)}));
    for (const auto& other : others_)
        if (other.key == key)
            return sayIn(problem_, say(phrases::keyOfInstruction, {keyName(key), other.name}));
    instruction_.key = key;
    sayIn(problem_, {});
    showKey();
}

void InstructionForm::save() {
    instruction_.name = name_.get_text();
    instruction_.prompt = prompt_.get_buffer()->get_text();
    instruction_.question = question_.get_text();
    instruction_.corrects = corrects_.get_active();
    if (instruction_.name.empty() || instruction_.prompt.empty())
        return sayIn(problem_, say(phrases::instructionIncomplete));
    saved_(instruction_);
}

} // namespace quillmark
