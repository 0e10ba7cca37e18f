// What the person can choose.
#pragma once

#include "settings/settings.h"
#include "views/action_button.h"

#include <functional>

namespace quillmark {

class SettingsPage : public Gtk::Box {
public:
    struct Actions {
        std::function<void()> back;
        std::function<void()> help;
    };

    explicit SettingsPage(Actions actions);

    void begin() { back_.grab_focus(); }

private:
    Actions actions_;
    ActionButton back_;
};

} // namespace quillmark
