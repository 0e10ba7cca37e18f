#include "views/settings/instructions_section.h"

#include "language/main_phrases.h"
#include "language/settings_phrases.h"
#include "views/icon_button.h"
#include "views/look.h"
#include "views/shortcuts.h"
#include "views/wrap_row.h"

#include <glibmm/main.h>

#include <utility>

namespace quillmark {

InstructionsSection::InstructionsSection(const SettingsActions& actions,
                                         std::function<void(std::size_t)> edit)
    : Section(say(phrases::instructions)), actions_(actions), edit_(std::move(edit)), add_(say(phrases::add)),
      standard_(say(phrases::standardInstructions)) {
    addNote(say(phrases::instructionsExplained));
    list_.set_selection_mode(Gtk::SELECTION_NONE);
    nameFor(list_, say(phrases::instructions));
    nameFor(add_, say(phrases::newInstruction));
    add_.signal_clicked().connect([this] { edit_(instructionsOf(actions_.settings()).size()); });
    standard_.signal_clicked().connect([this] { change([](auto& all) { all.clear(); }, 0); });
    auto* buttons = Gtk::make_managed<WrapRow>(8);
    buttons->add(add_);
    buttons->add(standard_);
    pack_start(list_, Gtk::PACK_SHRINK);
    pack_start(*buttons, Gtk::PACK_SHRINK);
    show();
}

void InstructionsSection::show() {
    for (auto* row : list_.get_children())
        list_.remove(*row);
    const auto all = instructionsOf(actions_.settings());
    for (std::size_t i = 0; i < all.size(); ++i)
        addInstruction(i, all);
    list_.show_all_children();
    standard_.set_sensitive(!actions_.settings().instructions.empty());
}

void InstructionsSection::addInstruction(std::size_t index, const std::vector<Instruction>& all) {
    const auto& [name, prompt, question, key, corrects] = all[index];
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 4);
    row->set_margin_start(8);
    auto* label = Gtk::make_managed<Gtk::Label>(name, Gtk::ALIGN_START);
    label->set_ellipsize(Pango::ELLIPSIZE_END);
    auto* keyLabel = Gtk::make_managed<Gtk::Label>(keyName(key));
    addClass(*keyLabel, look::dim);
    row->pack_start(*label, Gtk::PACK_EXPAND_WIDGET);
    row->pack_start(*keyLabel, Gtk::PACK_SHRINK);
    const auto swapWith = [this, index](std::size_t other) {
        change([=](auto& list) { std::swap(list.at(index), list.at(other)); }, other);
    };
    addButton(*row, "go-up-symbolic", say(phrases::moveUp, {name}), index > 0, [=] { swapWith(index - 1); });
    addButton(*row, "go-down-symbolic", say(phrases::moveDown, {name}), index + 1 < all.size(),
              [=] { swapWith(index + 1); });
    addButton(*row, "document-edit-symbolic", say(phrases::editInstruction, {name}), true,
              [this, index] { edit_(index); });
    addButton(*row, "list-remove-symbolic", say(phrases::remove, {name}), all.size() > 1, [this, index] {
        change([=](auto& list) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(index)); }, index);
    });
    list_.append(*row);
    row->get_parent()->set_can_focus(false);
    nameFor(*row->get_parent(), name);
}

void InstructionsSection::addButton(Gtk::Box& row, const char* icon, const std::string& name, bool usable,
                                    std::function<void()> pressed) {
    auto* button = Gtk::make_managed<IconButton>(icon, name);
    button->set_sensitive(usable);
    // Later: the button may go with its row.
    button->signal_clicked().connect([this, pressed = std::move(pressed)] {
        Glib::signal_idle().connect_once([pressed, alive = life()] {
            if (!alive.expired()) pressed();
        });
    });
    row.pack_start(*button, Gtk::PACK_SHRINK);
}

void InstructionsSection::change(const Change& how, std::size_t focus) {
    actions_.change([&](Settings& settings) {
        auto all = instructionsOf(settings);
        how(all);
        settings.instructions = all == defaultInstructions() ? std::vector<Instruction>() : std::move(all);
    });
    show();
    if (auto* row = list_.get_row_at_index(static_cast<int>(focus))) row->child_focus(Gtk::DIR_TAB_FORWARD);
}

} // namespace quillmark
