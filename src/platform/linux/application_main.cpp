#include "platform/application.h"
#include "platform/linux/accessibility_start.h"
#include "platform/linux/application_native.h"
#include "platform/linux/command_line.h"
#include "platform/linux/interface_program.h"
#include "platform/linux/main_loop.h"
#include "platform/linux/say.h"
#include "platform/linux/start_up.h"
#include "platform/linux/toolkit.h"
#include "platform/linux/window_native.h"
#include "platform/main_queue.h"

#include <glib-unix.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr int cannotRun = 1;
constexpr int unclearCommand = 2;

gboolean terminationSignal(gpointer) {
    MainQueue::async([] { Application::sharedApplication().terminate(); });
    return G_SOURCE_CONTINUE;
}

// A sentence when something the host needs is not there.
std::optional<std::string> prepare(std::vector<std::string> interface) {
    std::string problem;
    auto command = findInterface(std::move(interface), problem);
    if (command.empty()) return problem;
    setInterfaceCommand(std::move(command));
    if (auto missing = displayProblem()) return missing;
    if (!startToolkit()) return "the display could not be used; start it again, or log in again.";
    if (!startAccessibility(problem)) return problem;
    return std::nullopt;
}

// Every generation of a model server has a connection of its own.
void allowManyConnections() {
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) != 0) return;
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
}

int run(const std::function<MainInterface()>& load) {
    signal(SIGPIPE, SIG_IGN);
    allowManyConnections();
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        g_unix_signal_add(number, terminationSignal, nullptr);

    auto& application = Application::sharedApplication();
    MainInterface interface = load();
    application.setDelegate(interface.delegate.get());
    setMainWindow(interface.mainWindow);
    application.setMainMenu(std::move(interface.mainMenu));
    interface.mainWindow->awakeFromNib();
    interface.mainWindow->makeKeyAndOrderFront();

    const int status = runMainLoop();
    interface.mainWindow->orderOut();
    interface.mainWindow.reset();
    application.setMainMenu(nullptr);
    application.setDelegate(nullptr);
    return status;
}

} // namespace

int ApplicationMain(int argc, char** argv, const std::function<MainInterface()>& load) {
    const auto line = readCommandLine({argv + std::min(argc, 1), argv + argc});
    switch (line.wish) {
    case CommandLine::Wish::help:
        std::cout << helpText();
        return 0;
    case CommandLine::Wish::version:
        std::cout << versionText();
        return 0;
    case CommandLine::Wish::unclear:
        say(line.problem);
        return unclearCommand;
    case CommandLine::Wish::run:
        break;
    }
    if (const auto problem = prepare(line.interface)) {
        say(*problem);
        return cannotRun;
    }
    return run(load);
}

} // namespace platform
