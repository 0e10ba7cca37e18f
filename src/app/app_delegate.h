// Answers the desktop's questions about the program's life. A termination is first put to the interface,
// which may confirm or cancel it; one that does not answer within 15 seconds has confirmed. Main thread only.
#pragma once

#include "platform/application.h"

#include <memory>

class DesktopBridge;

class AppDelegate : public platform::ApplicationDelegate, public std::enable_shared_from_this<AppDelegate> {
public:
    bool applicationShouldTerminateAfterLastWindowClosed() override;
    bool applicationSupportsSecureRestorableState() override;
    platform::ApplicationTerminateReply applicationShouldTerminate() override;
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;

    // The next termination request is granted at once.
    void allowQuit() { allowQuit_ = true; }

    // Completes a quit: grants the pending request, or starts a termination that will be granted.
    void finishQuit();

    // Withdraws a pending termination; without one, does nothing.
    void cancelQuit();

    // The application's main window; absent once it is gone.
    std::weak_ptr<platform::Window> mainFlutterWindow;

private:
    std::shared_ptr<DesktopBridge> bridge() const;

    bool allowQuit_ = false;
    bool terminationPending_ = false; // the desktop waits for the interface's answer
};
