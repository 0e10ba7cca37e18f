// The interface as a whole: the host on one side, the window, the notices and the status icon on the other,
// and the assistant between them. Lives as long as the main loop; main thread only.
#pragma once

#include "client/connection.h"
#include "client/desktop.h"
#include "closing.h"
#include "model_choice.h"
#include "preferences.h"
#include "rewriting/assistant.h"
#include "settings/programs.h"
#include "spelling/spelling.h"
#include "system/background.h"
#include "system/notices.h"
#include "system/person_watch.h"
#include "system/settings_request.h"
#include "system/status_icon.h"
#include "views/window.h"

#include <memory>

namespace quillmark {

class Application : private Surroundings {
public:
    // The view goes into the host's window with that number.
    Application(Connection& connection, unsigned long view);
    ~Application() override;

private:
    void changed() override;
    void tell(const Notice& notice) override;
    void show() override;
    void hide() override;
    void captureAgain() override;
    void askForConsent(std::function<void(ModelConsent)> answer) override;
    void watchPerson() override { person_.begin(); }
    bool personWentOn() override { return person_.wentOn(); }
    bool personHoldsModifiers() override { return person_.holdsModifiers(); }
    void after(std::chrono::milliseconds delay, std::function<void()> work) override;

    void captured(const Capture& capture);
    void registerHotKey(const HotKey& hotKey, std::function<void(bool registered)> done);
    void useModel(bool use);

    // Puts the settings into force after a change.
    void settingsChanged(const Settings& before);
    void useLanguage();
    void useStatusIcon();

    void buildWindow();
    SettingsActions settingsActions();
    Closing::Actions closingActions();
    void showFacts();
    void askedToQuit();
    void hideToIcon();
    void showSettings();
    void showHelp();

    Preferences preferences_;
    unsigned long view_;
    Desktop desktop_;
    Spelling spelling_;
    Background background_;
    Notices notices_;
    PersonWatch person_;
    RecentPrograms recent_;
    ModelChoice model_;
    bool hotKeyRegistered_ = true;
    Assistant assistant_;
    Closing closing_;
    std::unique_ptr<StatusIcon> icon_;
    std::unique_ptr<Window> window_;
    SettingsRequests settingsRequests_{[this] { showSettings(); }};
};

} // namespace quillmark
