// The interface as a whole: the host on one side, the window, the notices and the status icon on the other,
// and the assistant between them. Lives as long as the main loop; main thread only.
#pragma once

#include "client/connection.h"
#include "client/desktop.h"
#include "rewriting/assistant.h"
#include "rewriting/model_status.h"
#include "settings/programs.h"
#include "settings/settings_file.h"
#include "spelling/spelling.h"
#include "system/background.h"
#include "system/notices.h"
#include "system/person_watch.h"
#include "system/status_icon.h"
#include "views/window.h"

#include <memory>

namespace quillmark {

class Application : private Surroundings {
public:
    Application(Connection& connection, unsigned long view);
    ~Application() override;

private:
    void changed() override;
    void tell(const Notice& notice) override;
    void show() override;
    void hide() override;
    void captureAgain() override;
    ModelConsent modelConsent() override;
    void watchPerson() override { person_.begin(); }
    bool personWentOn() override { return person_.wentOn(); }
    bool personHoldsModifiers() override { return person_.holdsModifiers(); }
    void after(std::chrono::milliseconds delay, std::function<void()> work) override;

    void captured(const Capture& capture);
    void quitAsked();

    void buildWindow();
    void showFacts();
    void useModel(bool use);
    void registerHotKey();

    LoadedSettings loaded_;
    Settings& settings_ = loaded_.settings;
    unsigned long view_;
    Desktop desktop_;
    Spelling spelling_;
    Background background_;
    Notices notices_;
    PersonWatch person_;
    LatePrograms late_;
    ModelStatus model_;
    bool hotKeyRegistered_ = true;
    Assistant assistant_;
    std::unique_ptr<StatusIcon> icon_;
    std::unique_ptr<Window> window_;
};

} // namespace quillmark
