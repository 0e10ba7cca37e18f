// A question that has the whole window, such as whether to quit.
#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

class QuestionPage : public Gtk::Box {
public:
    struct Choice {
        std::string name;
        std::function<void()> chosen;
    };

    QuestionPage();

    // The first choice has the keyboard: it loses nothing.
    void ask(const std::string& question, const std::vector<Choice>& choices);

private:
    Gtk::Label question_;
    Gtk::Box choices_{Gtk::ORIENTATION_HORIZONTAL, 8};
};

} // namespace quillmark
