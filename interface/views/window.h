// The interface's view in the host's window: one page at a time, and the keys.
#pragma once

#include "views/first_page.h"
#include "views/history_page.h"
#include "views/main_page.h"
#include "views/pages.h"
#include "views/question_page.h"
#include "views/settings_page.h"
#include "views/shortcuts.h"

#include <gtkmm/plug.h>

#include <functional>
#include <memory>
#include <string>

namespace quillmark {

class Window : public Gtk::Plug {
public:
    struct Actions {
        std::function<void()> hide;
        std::function<void(bool use)> useModel;
        std::function<void(int pixels)> grow;
    };

    // Into the host's window with that number.
    Window(unsigned long into, Assistant& assistant, Background& background, SettingsActions settings,
           Actions actions);

    // What is shown when nothing else is asked for: the rewrite, or the first page before there is one.
    void goHome();
    // A new text has come.
    void begin();
    // The rewrite has changed.
    void changed();
    void showSettings();
    void ask(const std::string& question, const std::vector<QuestionPage::Choice>& choices);

    void setFacts(const FirstPage::Facts& facts) { first_.show(facts); }
    void setModel(const std::string& words, const std::string& details);
    // What the settings show from the outside may have changed, and a sentence that concerns all of them.
    void refreshSettings();
    void warn(const std::string& sentence);
    void setInstructions(const std::vector<Instruction>& instructions);

protected:
    bool on_key_press_event(GdkEventKey* event) override;

private:
    void embed(unsigned long into);
    MainPage& main();
    void useInstructions();
    SettingsPage& settings();
    HistoryPage& history();
    QuestionPage& question();
    void go(Gtk::Widget& page);
    void showHistory();
    void escape();

    Assistant& assistant_;
    Background& background_;
    SettingsActions settingsActions_;
    Actions actions_;
    // What the pages are told once they are made.
    std::string warning_, model_, modelDetails_;
    std::vector<Instruction> instructions_;
    Shortcuts shortcuts_{*this};
    Pages pages_;
    FirstPage first_;
    // Made when they are first shown, the main one once the first is on the screen: the window comes up
    // earlier without them.
    std::unique_ptr<MainPage> main_;
    std::unique_ptr<HistoryPage> history_;
    std::unique_ptr<SettingsPage> settings_;
    std::unique_ptr<QuestionPage> question_;
};

} // namespace quillmark
