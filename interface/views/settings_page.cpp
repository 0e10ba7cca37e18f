#include "views/settings_page.h"

#include "language/check_phrases.h"
#include "language/main_phrases.h"
#include "language/settings_phrases.h"
#include "views/keys.h"
#include "views/look.h"
#include "views/settings/general_section.h"
#include "views/settings/hot_key_action_section.h"

#include <algorithm>
#include <utility>

namespace quillmark {

SettingsPage::SettingsPage(SettingsActions actions)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 8), actions_(std::move(actions)),
      back_(say(phrases::back), keys::back), help_(say(phrases::help), keys::help),
      title_(say(phrases::settings), Gtk::ALIGN_START), hotKey_(actions_), model_(actions_),
      instructions_(actions_, [this](std::size_t index) { edit(index); }),
      excluded_(actions_, [this] { pickProgram(); }),
      form_([this](const Instruction& instruction) { saved(instruction); }),
      programs_(
          [this](const ProgramName& program) {
              actions_.change([&](Settings& settings) {
                  if (std::ranges::find(settings.excludedApps, program.id) == settings.excludedApps.end())
                      settings.excludedApps.push_back(program.id);
              });
              excluded_.show();
              goHome();
          },
          [this] { goHome(); }),
      check_(actions_) {
    set_border_width(12);
    addClass(title_, look::heading);
    auto* top = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    top->pack_start(back_, Gtk::PACK_SHRINK);
    top->pack_start(title_, Gtk::PACK_EXPAND_WIDGET);
    top->pack_end(help_, Gtk::PACK_SHRINK);
    back_.signal_clicked().connect([this] { back(); });
    help_.signal_clicked().connect([this] { actions_.help(); });

    auto* way = Gtk::make_managed<HotKeyActionSection>(actions_);
    auto* general = Gtk::make_managed<GeneralSection>(actions_, [this] { check(); });
    for (Gtk::Widget* section :
         std::initializer_list<Gtk::Widget*>{&hotKey_, way, &model_, &instructions_, &excluded_, general})
        sections_.pack_start(*section, Gtk::PACK_SHRINK);
    all_.add(sections_);
    sections_.set_focus_vadjustment(all_.get_vadjustment());
    for (Gtk::Widget* page : std::initializer_list<Gtk::Widget*>{&all_, &form_, &programs_, &check_})
        pages_.add(*page);
    pages_.set_vhomogeneous(false);
    pages_.set_hhomogeneous(false);
    pack_start(*top, Gtk::PACK_SHRINK);
    pack_start(warning_, Gtk::PACK_SHRINK);
    pack_start(pages_, Gtk::PACK_EXPAND_WIDGET);
    show_all();
}

void SettingsPage::begin() {
    goHome();
    all_.get_vadjustment()->set_value(0);
    excluded_.show();
}

void SettingsPage::show() {
    hotKey_.show();
    model_.show();
}

void SettingsPage::warn(const std::string& sentence) { warning_.show("dialog-warning-symbolic", sentence); }

void SettingsPage::primary() {
    if (pages_.get_visible_child() == &form_) form_.save();
}

void SettingsPage::back() {
    if (pages_.get_visible_child() == &all_)
        actions_.back();
    else
        goHome();
}

void SettingsPage::go(Gtk::Widget& page, const std::string& title) {
    pages_.set_visible_child(page);
    title_.set_text(title);
}

void SettingsPage::goHome() {
    go(all_, say(phrases::settings));
    back_.grab_focus();
}

void SettingsPage::edit(std::size_t index) {
    auto others = instructionsOf(actions_.settings());
    edited_ = index;
    Instruction instruction;
    if (index < others.size()) {
        instruction = others[index];
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(index));
    }
    const auto name = instruction.name;
    go(form_, name.empty() ? say(phrases::newInstruction) : say(phrases::editInstruction, {name}));
    form_.edit(instruction, std::move(others));
}

void SettingsPage::saved(const Instruction& instruction) {
    actions_.change([&](Settings& settings) {
        settings.instructions = instructionsOf(settings);
        settings.instructions.resize(std::max(settings.instructions.size(), edited_ + 1));
        settings.instructions[edited_] = instruction;
    });
    instructions_.show();
    goHome();
}

void SettingsPage::pickProgram() {
    go(programs_, say(phrases::excludedPrograms));
    programs_.show(actions_.recentPrograms(), actions_.installedPrograms());
}

void SettingsPage::check() {
    go(check_, say(phrases::checkTitle));
    back_.grab_focus();
    check_.look();
}

} // namespace quillmark
