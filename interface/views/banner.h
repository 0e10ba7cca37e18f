// A message above the texts, with what can be done about it.
#pragma once

#include "views/icon.h"
#include "views/wrap_row.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

class Banner : public Gtk::Box {
public:
    struct Choice {
        std::string name;
        std::function<void()> chosen;
    };

    Banner();

    // Of one of the toolkit's icons; an empty message hides the banner.
    void show(const std::string& icon, const std::string& message, const std::vector<Choice>& choices = {});

    // Where stray keys do no harm: nothing in it acts on them.
    void takeFocus();

private:
    Icon icon_;
    Gtk::Label message_;
    WrapRow choices_;
    std::string shown_;
};

} // namespace quillmark
