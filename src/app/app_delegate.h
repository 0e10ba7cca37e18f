// Decides for the desktop when the program ends. The interface is asked first and may agree or refuse; when
// it does not answer within 15 seconds, it counts as agreed. Main thread only.
#pragma once

#include "platform/application.h"

#include <memory>

class DesktopBridge;

class AppDelegate : public platform::ApplicationDelegate, public std::enable_shared_from_this<AppDelegate> {
public:
    bool applicationShouldTerminateAfterLastWindowClosed() override;
    bool applicationSupportsSecureRestorableState() override;
    platform::ApplicationTerminateReply applicationShouldTerminate() override;
    void applicationTerminationWithdrawn() override;
    bool applicationShouldHandleReopen(bool hasVisibleWindows) override;
    bool applicationShouldHandleCapture() override;

    // Makes every later termination request be granted at once.
    void allowQuit() { allowQuit_ = true; }

    // Completes a quit: grants the pending request, or starts a termination that is granted at once.
    void finishQuit();

    // Refuses the pending termination; without one, does nothing.
    void cancelQuit();

    // The application's main window; absent once it is gone.
    std::weak_ptr<platform::Window> mainFlutterWindow;

private:
    std::shared_ptr<DesktopBridge> bridge() const;

    bool allowQuit_ = false;
    bool terminationPending_ = false; // the desktop waits for replyToApplicationShouldTerminate()
};
