#include "views/main_page.h"

#include "language/main_phrases.h"
#include "rewriting/describe.h"
#include "views/keys.h"
#include "views/look.h"

#include <gdkmm/monitor.h>
#include <glibmm/main.h>
#include <gtkmm/icontheme.h>
#include <gtkmm/stylecontext.h>

#include <utility>

namespace quillmark {

namespace {

Gtk::Box* line(int spacing = 8) { return Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, spacing); }

} // namespace

MainPage::MainPage(Assistant& assistant, Background& background, Actions actions)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 8), assistant_(assistant), background_(background),
      actions_(std::move(actions)), history_(say(phrases::history), keys::history),
      settings_(say(phrases::settings), keys::settings),
      instructions_([this](const Instruction& instruction, const std::string& answer) {
          assistant_.use(instruction, answer);
          panes_.rewritten.view().grab_focus();
      }),
      swap_(say(phrases::original), keys::swap), again_(say(phrases::again), keys::again),
      stop_(say(phrases::stop), keys::stop), copy_(say(phrases::copy), keys::copy),
      apply_(say(phrases::apply), keys::primary), undo_(say(phrases::undo), keys::undo) {
    set_border_width(12);

    auto* top = line();
    top->pack_start(source_, Gtk::PACK_EXPAND_WIDGET);
    top->pack_end(settings_, Gtk::PACK_SHRINK);
    top->pack_end(history_, Gtk::PACK_SHRINK);
    for (auto* button : {&history_, &settings_})
        button->set_valign(Gtk::ALIGN_START);

    modelWords_.set_ellipsize(Pango::ELLIPSIZE_END);
    addClass(modelWords_, look::dim);
    modelButton_.add(modelWords_);
    modelButton_.set_relief(Gtk::RELIEF_NONE);
    addClass(modelButton_, look::compact);
    status_.set_xalign(0);
    status_.set_tooltip_text(say(phrases::marksExplained));
    auto* stand = line();
    stand->pack_start(spinner_, Gtk::PACK_SHRINK);
    stand->pack_start(status_, Gtk::PACK_SHRINK);
    stand->pack_end(modelButton_, Gtk::PACK_SHRINK);

    auto* bottom = line();
    bottom->pack_start(again_, Gtk::PACK_SHRINK);
    bottom->pack_start(stop_, Gtk::PACK_SHRINK);
    bottom->pack_start(swap_, Gtk::PACK_SHRINK);
    bottom->pack_end(apply_, Gtk::PACK_SHRINK);
    bottom->pack_end(undo_, Gtk::PACK_SHRINK);
    bottom->pack_end(copy_, Gtk::PACK_SHRINK);
    apply_.get_style_context()->add_class("suggested-action");

    pack_start(*top, Gtk::PACK_SHRINK);
    pack_start(instructions_, Gtk::PACK_SHRINK);
    pack_start(banner_, Gtk::PACK_SHRINK);
    pack_start(panes_, Gtk::PACK_EXPAND_WIDGET);
    pack_start(*stand, Gtk::PACK_SHRINK);
    pack_start(*bottom, Gtk::PACK_SHRINK);
    show_all();
    for (Gtk::Widget* widget :
         std::initializer_list<Gtk::Widget*>{&swap_, &again_, &stop_, &undo_, &spinner_})
        widget->set_no_show_all();
    swap_.hide();
    // The first icon lets GTK read the icon theme, which takes 8 ms: not when a text has come.
    Gtk::IconTheme::get_default()->lookup_icon("process-working-symbolic", 16);
    connect();
}

void MainPage::connect() {
    history_.signal_clicked().connect([this] { actions_.history(); });
    settings_.signal_clicked().connect([this] { actions_.settings(); });
    modelButton_.signal_clicked().connect([this] { actions_.settings(); });
    again_.signal_clicked().connect([this] { assistant_.again(); });
    stop_.signal_clicked().connect([this] { assistant_.stop(); });
    copy_.signal_clicked().connect([this] { assistant_.copy(); });
    apply_.signal_clicked().connect([this] { assistant_.apply(); });
    undo_.signal_clicked().connect([this] { assistant_.putBack(); });
    swap_.signal_clicked().connect([this] { panes_.swap(); });
    panes_.single.connect([this](bool single) { swap_.set_visible(single); });
    panes_.rewritten.edited.connect([this] { assistant_.edit(panes_.rewritten.text()); });
}

void MainPage::addKeys(Shortcuts& shortcuts, const std::vector<Instruction>& instructions) {
    shortcuts.forget(*this);
    const auto add = [&](const std::string& key, std::function<void()> action) {
        shortcuts.set(*this, key, std::move(action));
    };
    for (std::size_t i = 0; i < instructions.size(); ++i)
        add(instructions[i].key, [this, i] { instructions_.choose(i); });
    add(keys::primary, [this] { assistant_.apply(); });
    add(keys::copy, [this] { assistant_.copy(); });
    add(keys::stop, [this] { assistant_.stop(); });
    add(keys::again, [this] { assistant_.again(); });
    add(keys::undo, [this] { assistant_.putBack(); });
    add(keys::swap, [this] { panes_.swap(); });
    add(keys::history, [this] { actions_.history(); });
    add(keys::settings, [this] { actions_.settings(); });
}

void MainPage::setModel(const std::string& words, const std::string& details) {
    modelWords_.set_text(words);
    modelButton_.set_tooltip_text(details.empty() ? words : details);
    nameFor(modelButton_, words);
}

void MainPage::begin() {
    tallest_ = 0;
    instructions_.closeQuestion();
    panes_.rewritten.show();
    panes_.rewritten.view().grab_focus();
}

bool MainPage::closeOpen() {
    if (!instructions_.closeQuestion()) return false;
    panes_.rewritten.view().grab_focus();
    return true;
}

void MainPage::show() {
    const auto& rewrite = assistant_.rewrite();
    source_.show(rewrite.capture);
    instructions_.show(rewrite.instruction, canRewrite(rewrite));
    showTexts(rewrite);
    showActions(rewrite);
    showBanner(rewrite);
    compare();
    showStatus(rewrite);
    growSoon();
    shown_ = rewrite.stage;
}

void MainPage::showTexts(const Rewrite& rewrite) {
    const bool growing = rewrite.stage == Stage::rewriting;
    panes_.original.setText(rewrite.capture.text, growing);
    panes_.rewritten.setText(rewrite.text, growing);
    panes_.rewritten.setEditable(canEdit(rewrite));
}

void MainPage::showActions(const Rewrite& rewrite) {
    stop_.set_visible(canStop(rewrite));
    again_.set_visible(!canStop(rewrite));
    again_.set_sensitive(canRewrite(rewrite));
    copy_.set_sensitive(canCopy(rewrite));
    undo_.set_visible(canPutBack(rewrite));
    apply_.set_visible(!canPutBack(rewrite));
    apply_.set_sensitive(canApply(rewrite));
    const bool onlyCopied = rewrite.capture.token.empty() && rewrite.stage != Stage::nothing;
    apply_.label(say(onlyCopied ? phrases::copyAndHide : phrases::apply), keys::primary);
}

void MainPage::showBanner(const Rewrite& rewrite) {
    constexpr auto good = "emblem-ok-symbolic", information = "dialog-information-symbolic",
                   warning = "dialog-warning-symbolic", question = "dialog-question-symbolic";
    if (rewrite.originalCopied) return banner_.show(information, say(phrases::originalOnClipboard));
    switch (rewrite.stage) {
    case Stage::asking:
        return banner_.show(question, say(phrases::askConsent, {modelWords_.get_text()}),
                            {{say(phrases::useModel), [this] { actions_.useModel(true); }},
                             {say(phrases::spellingOnly), [this] { actions_.useModel(false); }}});
    case Stage::failed:
        return banner_.show(warning, rewrite.why);
    case Stage::refused:
        banner_.show(warning, say(phrases::refusedInWords));
        if (shown_ != Stage::refused) banner_.takeFocus();
        return;
    case Stage::stopped:
        return banner_.show(information, say(phrases::wasStopped));
    case Stage::applied:
        return banner_.show(good, say(phrases::standsThere));
    case Stage::copied:
        return banner_.show(information, say(phrases::onClipboard));
    case Stage::takenBack:
        return banner_.show(good, say(phrases::originalIsBack));
    default:
        return banner_.show(warning, rewrite.why);
    }
}

void MainPage::showStatus(const Rewrite& rewrite) {
    const bool busy = rewrite.stage == Stage::rewriting;
    spinner_.set_visible(busy);
    spinner_.property_active() = busy;
    std::string words;
    if (busy)
        words = say(phrases::rewriting);
    else if (rewrite.text.empty())
        words.clear();
    else if (differences_.anew)
        words = say(phrases::allNew);
    else if (differences_.count == 0)
        words = say(phrases::noChange);
    else
        words = count(differences_.count, phrases::oneChange, phrases::manyChanges);
    if (!busy && rewrite.spellingOnly) words += " · " + say(phrases::spellingOnly);
    if (rewrite.used && rewrite.stage == Stage::done) words += " · " + say(phrases::wasCopied);
    status_.set_text(words);
}

MainPage::Texts MainPage::texts() const {
    const auto& rewrite = assistant_.rewrite();
    return {rewrite.capture.text, rewrite.text, rewrite.stage == Stage::rewriting || rewrite.text.empty()};
}

// One comparison at a time, of the newest texts, off the main loop.
void MainPage::compare() {
    if (comparing_ || texts() == compared_) return;
    comparing_ = true;
    background_.run([this, texts = texts(), life = std::weak_ptr(life_)]() -> std::function<void()> {
        auto found = texts.growing ? differencesSoFar(texts.before, texts.after)
                                   : differences(texts.before, texts.after);
        return [this, found = std::move(found), texts, life]() mutable {
            if (life.expired()) return;
            comparing_ = false;
            compared_ = std::move(texts);
            showDifferences(std::move(found));
        };
    });
}

// Of a text that has grown since they are still true.
void MainPage::showDifferences(Differences found) {
    const auto now = texts();
    if (now.before == compared_.before && now.growing == compared_.growing &&
        now.after.starts_with(compared_.after)) {
        differences_ = std::move(found);
        panes_.original.mark(differences_.removed);
        panes_.rewritten.mark(differences_.added);
        showStatus(assistant_.rewrite());
    }
    compare();
}

// Once the toolkit has measured the texts.
void MainPage::growSoon() {
    constexpr unsigned measured = 150; // milliseconds
    if (std::exchange(growing_, true)) return;
    Glib::signal_timeout().connect_once(
        [this, life = std::weak_ptr(life_)] {
            if (life.expired()) return;
            growing_ = false;
            const int missing = panes_.missingHeight(), height = get_allocated_height();
            const auto window = get_window();
            if (missing <= 0 || !window || height < tallest_) return;
            tallest_ = height;
            Gdk::Rectangle area;
            get_display()->get_monitor_at_window(window)->get_workarea(area);
            const int room = area.get_height() * 3 / 4 - height;
            if (room > 0) actions_.grow(std::min(missing, room));
        },
        measured);
}

bool MainPage::onKey(GdkEventKey* event) {
    const bool control = (event->state & GDK_CONTROL_MASK) != 0, shift = (event->state & GDK_SHIFT_MASK) != 0;
    if (!control || !panes_.rewritten.view().has_focus()) return false;
    const auto key = gdk_keyval_to_lower(event->keyval);
    if (key != GDK_KEY_z && key != GDK_KEY_y) return false;
    if (key == GDK_KEY_y || shift)
        panes_.rewritten.redo();
    else
        panes_.rewritten.undo();
    return true;
}

} // namespace quillmark
