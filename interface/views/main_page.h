// The main view: where a text came from, the text, its rewrite, and what can be done with it.
#pragma once

#include "rewriting/assistant.h"
#include "system/background.h"
#include "views/action_button.h"
#include "views/banner.h"
#include "views/instruction_row.h"
#include "views/panes.h"
#include "views/shortcuts.h"
#include "views/source_line.h"

#include <gtkmm/spinner.h>

#include <functional>

namespace quillmark {

class MainPage : public Gtk::Box {
public:
    struct Actions {
        std::function<void()> history;
        std::function<void()> settings;
        std::function<void(bool use)> useModel; // the answer to whether it may have the texts
        std::function<void(int pixels)> grow;
    };

    MainPage(Assistant& assistant, Background& background, Actions actions);

    void setInstructions(const std::vector<Instruction>& instructions) {
        instructions_.setInstructions(instructions);
    }
    // Which model there is; the details are shown to who points at it.
    void setModel(const std::string& words, const std::string& details);

    // The rewrite as it is now.
    void show();
    // A new text has come: the keyboard goes where the person would type next.
    void begin();

    // What the keys of the page do; the ones before are taken back.
    void addKeys(Shortcuts& shortcuts, const std::vector<Instruction>& instructions);
    // Closes what is open; false when nothing is.
    bool closeOpen();
    bool onKey(GdkEventKey* event);

private:
    struct Texts {
        std::string before, after;
        bool growing = false; // of `after` more is to come

        friend bool operator==(const Texts&, const Texts&) = default;
    };

    void connect();
    void showTexts(const Rewrite& rewrite);
    void showActions(const Rewrite& rewrite);
    void showBanner(const Rewrite& rewrite);
    void showStatus(const Rewrite& rewrite);
    void compare();
    Texts texts() const;
    void showDifferences(Differences found);
    void growSoon();

    Assistant& assistant_;
    Background& background_;
    Actions actions_;

    SourceLine source_;
    ActionButton history_, settings_;
    InstructionRow instructions_;
    Banner banner_;
    Panes panes_;
    Gtk::Spinner spinner_;
    Gtk::Label status_, modelWords_;
    Gtk::Button modelButton_;
    ActionButton swap_, again_, stop_, copy_, apply_, undo_;

    Stage shown_ = Stage::nothing;
    Differences differences_;
    Texts compared_; // what the differences are of
    bool comparing_ = false;
    bool growing_ = false; // a look at the height is due
    int tallest_ = 0;      // the page was this tall; the person who makes it smaller wants it so
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace quillmark
