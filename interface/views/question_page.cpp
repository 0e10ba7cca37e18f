#include "views/question_page.h"

#include "views/look.h"

#include <glibmm/main.h>

namespace quillmark {

QuestionPage::QuestionPage() : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 16) {
    set_border_width(24);
    get_accessible()->set_role(Atk::ROLE_ALERT);
    set_valign(Gtk::ALIGN_CENTER);
    question_.set_line_wrap();
    question_.set_max_width_chars(50);
    question_.set_justify(Gtk::JUSTIFY_CENTER);
    choices_.set_halign(Gtk::ALIGN_CENTER);
    pack_start(question_, Gtk::PACK_SHRINK);
    pack_start(choices_, Gtk::PACK_SHRINK);
    show_all();
}

void QuestionPage::ask(const std::string& question, const std::vector<Choice>& choices) {
    question_.set_text(question);
    nameFor(*this, question);
    for (auto* button : choices_.get_children())
        choices_.remove(*button);
    for (const auto& choice : choices) {
        auto* button = Gtk::make_managed<Gtk::Button>(choice.name);
        // Later: what it does may ask the next question.
        button->signal_clicked().connect(
            [chosen = choice.chosen] { Glib::signal_idle().connect_once(chosen); });
        choices_.pack_start(*button, Gtk::PACK_SHRINK);
    }
    choices_.show_all();
    if (!choices_.get_children().empty()) choices_.get_children().front()->grab_focus();
}

} // namespace quillmark
