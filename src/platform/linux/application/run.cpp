#include "platform/linux/application/run.h"

#include "platform/linux/application/session_client.h"
#include "platform/linux/application/termination.h"
#include "platform/linux/base/child_process.h"
#include "platform/linux/base/memory.h"
#include "platform/linux/window/main_window.h"
#include "platform/main_queue.h"

#include <gdk/gdk.h>
#include <glib-unix.h>

#include <array>
#include <csignal>
#include <optional>
#include <utility>

namespace platform {
namespace {

// While it lives, the signals that end a program are put to the delegate first.
class TerminationSignals {
public:
    TerminationSignals() {
        std::size_t next = 0;
        for (const int number : {SIGTERM, SIGINT, SIGHUP})
            sources_[next++] = g_unix_signal_add(number, received, nullptr);
    }
    ~TerminationSignals() {
        for (const guint source : sources_)
            g_source_remove(source);
    }
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    static gboolean received(gpointer) {
        MainQueue::async([] { Termination::shared().askedByPerson(); });
        return G_SOURCE_CONTINUE;
    }

    std::array<guint, 3> sources_{};
};

// While it lives, the session's manager can ask for the end, and gets the delegate's decision.
class SessionPart {
public:
    explicit SessionPart(SessionRestart restart)
        : session_(
              {[] { Termination::shared().askedBySession(); }, [] { Termination::shared().sessionGoesOn(); }},
              std::move(restart)) {
        Termination::shared().refuseSession = [this] { session_.refuse(); };
    }
    ~SessionPart() { Termination::shared().refuseSession = nullptr; }
    SessionPart(const SessionPart&) = delete;
    SessionPart& operator=(const SessionPart&) = delete;

private:
    SessionClient session_;
};

} // namespace

MainLoopEnd runHost(const std::function<MainInterface()>& load, std::unique_ptr<SoleInstance> instance,
                    const CommandLine& line, const std::string& program) {
    signal(SIGPIPE, SIG_IGN);
    prepareMemory();
    raiseOpenFileLimit();
    std::optional<TerminationSignals> signals(std::in_place);

    auto& application = Application::sharedApplication();
    MainInterface interface = load();
    application.setDelegate(interface.delegate.get());
    setMainWindow(interface.mainWindow);
    application.setMainMenu(std::move(interface.mainMenu));
    interface.mainWindow->awakeFromNib();
    if (line.background)
        gdk_notify_startup_complete(); // else the first window to be shown does this
    else
        interface.mainWindow->makeKeyAndOrderFront();
    // Leaves the session last, as it is destroyed: while the session ends, the interface may still have
    // something to save.
    const SessionPart session({restartCommand(program, line), line.sessionClientId});

    auto end = runMainLoop();
    instance.reset(); // whoever starts the program from now on gets a host of their own
    interface.mainWindow->orderOut();
    interface.mainWindow.reset();
    application.setMainMenu(nullptr);
    application.setDelegate(nullptr);
    signals.reset(); // while it waits for the end of the session, a signal ends it
    return end;
}

} // namespace platform
