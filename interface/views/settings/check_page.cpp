#include "views/settings/check_page.h"

#include "language/check_phrases.h"
#include "language/rewriting_phrases.h"
#include "views/icon.h"
#include "views/look.h"
#include "views/settings/section.h"

#include <array>

namespace quillmark {

namespace {

// In the order of Grade.
constexpr std::array icons{"emblem-ok-symbolic", "dialog-warning-symbolic", "dialog-error-symbolic"};

} // namespace

CheckPage::CheckPage(const SettingsActions& actions)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 8), actions_(actions), again_(say(phrases::checkAgain)),
      copy_(say(phrases::copyReport)), status_(*wrappedLabel()) {
    auto* buttons = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    buttons->pack_start(again_, Gtk::PACK_SHRINK);
    buttons->pack_start(copy_, Gtk::PACK_SHRINK);
    list_.set_selection_mode(Gtk::SELECTION_NONE);
    nameFor(list_, say(phrases::checkTitle));
    scroller_.add(list_);
    pack_start(*buttons, Gtk::PACK_SHRINK);
    pack_start(status_, Gtk::PACK_SHRINK);
    pack_start(scroller_, Gtk::PACK_EXPAND_WIDGET);
    show_all();
    again_.signal_clicked().connect([this] { look(); });
    copy_.signal_clicked().connect([this] { copy(); });
}

void CheckPage::look() {
    status_.set_text(say(phrases::checking));
    report_.clear();
    again_.set_sensitive(false);
    copy_.set_sensitive(false);
    for (auto* row : list_.get_children())
        list_.remove(*row);
    actions_.check([this, life = std::weak_ptr(life_)](const std::optional<std::vector<Finding>>& findings,
                                                       const std::string& problem) {
        if (life.expired()) return;
        again_.set_sensitive();
        if (findings)
            show(*findings);
        else
            status_.set_text(problem);
    });
}

void CheckPage::show(const std::vector<Finding>& findings) {
    status_.set_text(summaryOf(findings));
    for (const auto& finding : findings)
        addFinding(finding);
    list_.show_all_children();
    report_ = reportOf(findings);
    copy_.set_sensitive();
}

void CheckPage::addFinding(const Finding& finding) {
    const auto title = nameOf(finding) + " · " + gradeOf(finding), found = foundOf(finding),
               explanation = explanationOf(finding);
    auto* column = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL, 2);
    auto* name = wrappedLabel(title);
    addClass(*name, look::heading);
    auto* fact = wrappedLabel(found);
    addClass(*fact, look::dim);
    for (auto* label : {name, fact})
        column->pack_start(*label, Gtk::PACK_SHRINK);
    if (!explanation.empty()) column->pack_start(*wrappedLabel(explanation), Gtk::PACK_SHRINK);

    auto* icon = Gtk::make_managed<Icon>(icons.at(static_cast<std::size_t>(finding.grade)));
    icon->set_valign(Gtk::ALIGN_START);
    auto* line = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, 8);
    line->set_border_width(6);
    line->pack_start(*icon, Gtk::PACK_SHRINK);
    line->pack_start(*column, Gtk::PACK_EXPAND_WIDGET);
    auto* row = Gtk::make_managed<Gtk::ListBoxRow>();
    row->add(*line);
    row->set_activatable(false);
    nameFor(*row, title, found + (explanation.empty() ? "" : "\n" + explanation));
    list_.append(*row);
}

void CheckPage::copy() {
    actions_.copy(report_, [this, life = std::weak_ptr(life_)](bool copied) {
        if (!life.expired()) status_.set_text(say(copied ? phrases::reportCopied : phrases::pasteBusy));
    });
}

} // namespace quillmark
