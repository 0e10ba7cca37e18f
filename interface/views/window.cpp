#include "views/window.h"

#include "views/keys.h"
#include "views/look.h"

#include <gdk/gdkx.h>

#include <utility>

namespace quillmark {

Window::Window(unsigned long into, Assistant& assistant, Background& background, SettingsActions settings,
               Actions actions)
    : assistant_(assistant), actions_(std::move(actions)), first_({.tryOut =
                                                                       [this](const std::string& text) {
                                                                           assistant_.tryOut(text);
                                                                           begin();
                                                                       },
                                                                   .settings = [this] { showSettings(); }}),
      main_(assistant, background,
            {.history = [this] { showHistory(); },
             .settings = [this] { showSettings(); },
             .useModel = actions_.useModel,
             .grow = actions_.grow}),
      history_({.open =
                    [this](std::size_t entry) {
                        assistant_.reopen(entry);
                        begin();
                    },
                .clear =
                    [this] {
                        assistant_.forgetHistory();
                        showHistory();
                    },
                .back = [this] { goHome(); }}),
      settings_(withBack(std::move(settings))) {
    for (Gtk::Widget* page :
         std::initializer_list<Gtk::Widget*>{&first_, &main_, &history_, &settings_, &question_}) {
        page->show();
        pages_.add(*page);
    }
    pages_.set_homogeneous(false);
    add(pages_);
    pages_.show();
    nameFor(*this, "Quillmark");
    shortcuts_.set(pages_, keys::help, [this] { settings_.help(); });
    shortcuts_.set(settings_, keys::primary, [this] { settings_.primary(); });
    shortcuts_.set(first_, keys::primary, [this] { first_.tryOut(); });
    shortcuts_.set(first_, keys::settings, [this] { showSettings(); });
    goHome();
    embed(into);
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

SettingsActions Window::withBack(SettingsActions actions) {
    actions.back = [this] { goHome(); };
    return actions;
}

void Window::go(Gtk::Widget& page) { pages_.set_visible_child(page); }

void Window::goHome() {
    if (assistant_.rewrite().stage == Stage::nothing) {
        go(first_);
        return first_.begin();
    }
    main_.show();
    go(main_);
    main_.begin();
}

void Window::begin() {
    main_.show();
    go(main_);
    main_.begin();
}

void Window::changed() { main_.show(); }

void Window::showSettings() {
    go(settings_);
    settings_.begin();
}

void Window::showHistory() {
    go(history_);
    history_.show(assistant_.history());
}

void Window::ask(const std::string& question, const std::vector<QuestionPage::Choice>& choices) {
    go(question_);
    question_.ask(question, choices);
}

void Window::setInstructions(const std::vector<Instruction>& instructions) {
    main_.setInstructions(instructions);
    main_.addKeys(shortcuts_, instructions);
}

// Keys that neither the window nor the focused widget has a use for.
bool Window::on_key_press_event(GdkEventKey* event) {
    if (main_.get_mapped() && main_.onKey(event)) return true;
    if (Gtk::Plug::on_key_press_event(event)) return true;
    if (event->keyval != GDK_KEY_Escape) return false;
    escape();
    return true;
}

void Window::escape() {
    if (main_.get_mapped() && main_.closeOpen()) return;
    const auto* page = pages_.get_visible_child();
    if (page == &settings_) return settings_.back();
    if (page == &history_) return goHome();
    actions_.hide();
}

} // namespace quillmark
