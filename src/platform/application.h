#pragma once

#include "platform/menu.h"
#include "platform/window.h"

#include <functional>
#include <memory>

namespace platform {

enum class ApplicationTerminateReply { terminateCancel = 0, terminateNow = 1, terminateLater = 2 };

// What the desktop asks the program about its life, on the main thread.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;
    virtual bool applicationSupportsSecureRestorableState() = 0;
    virtual ApplicationTerminateReply applicationShouldTerminate() = 0;
    // The termination that the delegate postponed is not asked for any more: the end of the session was
    // called off. Needs no reply.
    virtual void applicationTerminationWithdrawn() = 0;
    // The user started the program again while it runs, or clicked its icon.
    virtual bool applicationShouldHandleReopen(bool hasVisibleWindows) = 0;
    // The user asked for a capture in another way than by the hot key: with a shortcut of the desktop, say.
    // True when one follows, false when the program is not ready for it.
    virtual bool applicationShouldHandleCapture() = 0;
};

// The program as the desktop sees it. Main thread only.
class Application {
public:
    static Application& sharedApplication();

    ApplicationDelegate* delegate() const;
    // Not owned.
    void setDelegate(ApplicationDelegate* delegate);

    // Absent (null) until the main interface has been made.
    Menu* mainMenu() const;
    void setMainMenu(std::unique_ptr<Menu> menu);

    // Brings the program to the front.
    void activate();

    // Asks the delegate whether to end, and ends when it agrees.
    void terminate();

    // Settles a termination that the delegate postponed: true ends the program.
    void replyToApplicationShouldTerminate(bool shouldTerminate);

private:
    Application() = default;
};

// What a program is made of. The desktop keeps all of it until the program ends.
struct MainInterface {
    std::shared_ptr<ApplicationDelegate> delegate;
    std::unique_ptr<Menu> mainMenu;
    std::shared_ptr<Window> mainWindow;
};

// Runs the program's main loop: prepares the desktop, makes the main interface with `load`, calls the
// window's awake hook, shows the window, and returns the exit status when the program ends.
int ApplicationMain(int argc, char** argv, const std::function<MainInterface()>& load);

} // namespace platform
