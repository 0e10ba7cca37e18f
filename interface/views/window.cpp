#include "views/window.h"

#include "views/keys.h"
#include "views/look.h"

#include <gdk/gdkx.h>
#include <glibmm/main.h>

#include <utility>

namespace quillmark {

Window::Window(unsigned long into, Assistant& assistant, Background& background, SettingsActions settings,
               Actions actions)
    : assistant_(assistant), background_(background), settingsActions_(std::move(settings)),
      actions_(std::move(actions)), first_({.tryOut =
                                                [this](const std::string& text) {
                                                    assistant_.tryOut(text);
                                                    begin();
                                                },
                                            .settings = [this] { showSettings(); }}) {
    settingsActions_.back = [this] { goHome(); };
    Gtk::Widget& first = first_;
    first.show();
    pages_.add(first);
    first.signal_draw().connect([this](const Cairo::RefPtr<Cairo::Context>&) {
        if (!main_)
            Glib::signal_idle().connect_once(sigc::hide_return(sigc::mem_fun(*this, &Window::main)),
                                             Glib::PRIORITY_LOW);
        return false;
    });
    pages_.set_homogeneous(false);
    add(pages_);
    pages_.show();
    nameFor(*this, "Quillmark");
    shortcuts_.set(pages_, keys::help, [this] { settingsActions_.help(); });
    shortcuts_.set(first_, keys::primary, [this] { first_.tryOut(); });
    shortcuts_.set(first_, keys::settings, [this] { showSettings(); });
    goHome();
    embed(into);
}

MainPage& Window::main() {
    if (!main_) {
        main_ = std::make_unique<MainPage>(assistant_, background_,
                                           MainPage::Actions{.history = [this] { showHistory(); },
                                                             .settings = [this] { showSettings(); },
                                                             .useModel = actions_.useModel,
                                                             .grow = actions_.grow});
        Gtk::Widget& page = *main_;
        page.show();
        pages_.add(page);
        main_->setModel(model_, modelDetails_);
        useInstructions();
    }
    return *main_;
}

void Window::useInstructions() {
    main_->setInstructions(instructions_);
    main_->addKeys(shortcuts_, instructions_);
}

SettingsPage& Window::settings() {
    if (!settings_) {
        settings_ = std::make_unique<SettingsPage>(settingsActions_);
        settings_->show();
        settings_->warn(warning_);
        pages_.add(*settings_);
        shortcuts_.set(*settings_, keys::primary, [this] { settings_->primary(); });
    }
    return *settings_;
}

HistoryPage& Window::history() {
    if (!history_) {
        HistoryPage::Actions actions;
        actions.open = [this](std::size_t entry) {
            assistant_.reopen(entry);
            begin();
        };
        actions.clear = [this] {
            assistant_.forgetHistory();
            showHistory();
        };
        actions.back = [this] { goHome(); };
        history_ = std::make_unique<HistoryPage>(std::move(actions));
        pages_.add(*history_);
    }
    return *history_;
}

QuestionPage& Window::question() {
    if (!question_) {
        question_ = std::make_unique<QuestionPage>();
        pages_.add(*question_);
    }
    return *question_;
}

// The toolkit embeds a plug as soon as it makes its window, and only then says where its controls are to be
// found: a host that reads this at once finds nothing, and screen readers neither. So the window is made
// first.
void Window::embed(unsigned long into) {
    realize();
    auto* display = GDK_DISPLAY_XDISPLAY(get_display()->gobj());
    XReparentWindow(display, get_id(), into, 0, 0);
    XFlush(display);
}

void Window::go(Gtk::Widget& page) { pages_.set_visible_child(page); }

void Window::goHome() {
    if (assistant_.rewrite().stage == Stage::nothing) {
        go(first_);
        return first_.begin();
    }
    begin();
}

void Window::begin() {
    main().show();
    go(main());
    main().begin();
}

void Window::changed() {
    if (main_) main_->show();
}

void Window::setModel(const std::string& words, const std::string& details) {
    model_ = words;
    modelDetails_ = details;
    if (main_) main_->setModel(words, details);
}

void Window::showSettings() {
    go(settings());
    settings().begin();
}

void Window::refreshSettings() {
    if (settings_) settings_->show();
}

void Window::warn(const std::string& sentence) {
    warning_ = sentence;
    if (settings_) settings_->warn(warning_);
}

void Window::showHistory() {
    go(history());
    history().show(assistant_.history());
}

void Window::ask(const std::string& text, const std::vector<QuestionPage::Choice>& choices) {
    go(question());
    question().ask(text, choices);
}

void Window::setInstructions(const std::vector<Instruction>& instructions) {
    instructions_ = instructions;
    if (main_) useInstructions();
}

// Keys that neither the window nor the focused widget has a use for.
bool Window::on_key_press_event(GdkEventKey* event) {
    if (main_ && main_->get_mapped() && main_->onKey(event)) return true;
    if (Gtk::Plug::on_key_press_event(event)) return true;
    if (event->keyval != GDK_KEY_Escape) return false;
    escape();
    return true;
}

void Window::escape() {
    if (main_ && main_->get_mapped() && main_->closeOpen()) return;
    const auto* page = pages_.get_visible_child();
    if (page == settings_.get()) return settings_->back();
    if (page == history_.get()) return goHome();
    actions_.hide();
}

} // namespace quillmark
