// Language, start at login, status icon.
#pragma once

#include "views/settings/actions.h"
#include "views/settings/section.h"

namespace quillmark {

class GeneralSection : public Section {
public:
    explicit GeneralSection(const SettingsActions& actions);

private:
    void addLanguage();
    void addLogin();
    void addStatusIcon();

    const SettingsActions& actions_;
};

} // namespace quillmark
