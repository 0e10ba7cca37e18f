// Language, start at login, status icon, and the way to the page that checks the desktop.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

namespace quillmark {

class GeneralSection : public Section {
public:
    GeneralSection(const SettingsActions& actions, const std::function<void()>& check);

private:
    void addLanguage();
    void addLogin();
    void addStatusIcon();

    const SettingsActions& actions_;
};

} // namespace quillmark
