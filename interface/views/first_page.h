// What is there before a text has been captured: what this does, the hot key, what is missing, and a text to
// try it on.
#pragma once

#include "views/action_button.h"
#include "views/banner.h"
#include "views/column.h"
#include "views/scroller.h"
#include "views/shortcuts.h"
#include "views/text_area.h"

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

class FirstPage : public Scroller {
public:
    struct Actions {
        std::function<void(const std::string& text)> tryOut;
        std::function<void()> settings;
    };

    explicit FirstPage(Actions actions);

    struct Facts {
        bool firstTime = false;
        bool atOnce = false;
        std::string hotKey;  // its name
        std::string model;   // in words
        std::string missing; // a sentence; empty: nothing is
    };
    void show(const Facts& facts);

    void begin() { text_.grab_focus(); }
    void tryOut();

private:
    Actions actions_;
    Column column_{10};
    Gtk::Label title_, privacy_, model_;
    std::vector<Gtk::Label*> steps_;
    Banner missing_;
    TextArea text_;
    ActionButton try_, settings_;
};

} // namespace quillmark
