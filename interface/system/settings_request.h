// "quillmark-interface --settings", which the desktop's menu runs: asks the interface that runs to show its
// settings. Over the session bus; main thread only.
#pragma once

#include <giomm/dbusconnection.h>

#include <functional>
#include <string>

namespace quillmark {

// Carries out such requests while it lives. Does nothing without a session bus.
class SettingsRequests {
public:
    explicit SettingsRequests(const std::function<void()>& show);
    ~SettingsRequests();
    SettingsRequests(const SettingsRequests&) = delete;
    SettingsRequests& operator=(const SettingsRequests&) = delete;

private:
    Glib::RefPtr<Gio::DBus::Connection> bus_;
    guint actions_ = 0, name_ = 0;
};

// Starts the host first where none runs. Empty when it is done, else a sentence that says what to do.
std::string askForSettings();

} // namespace quillmark
