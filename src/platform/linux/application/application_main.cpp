#include "platform/application.h"
#include "platform/linux/accessibility/trust.h"
#include "platform/linux/application/command_line.h"
#include "platform/linux/application/gtk_start.h"
#include "platform/linux/application/run.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/interface/program.h"
#include "platform/linux/window/main_window.h"
#include "platform/linux/window/native_window.h"
#include "platform/linux/window/notice.h"
#include "platform/linux/x11/base/display_check.h"
#include "platform/linux/x11/base/sole_instance.h"
#include "platform/main_queue.h"
#include "platform/models/language_model_command.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr int cannotRun = 1;
constexpr int unclearCommand = 2;

// The person started the program once more.
void reopen() {
    MainQueue::async([] {
        const auto window = mainWindow();
        auto* delegate = Application::sharedApplication().delegate();
        if (delegate != nullptr)
            delegate->applicationShouldHandleReopen(window && window->native().isVisible());
    });
}

// A sentence when something the host needs is not there.
std::optional<std::string> prepare(std::vector<std::string> interface,
                                   std::optional<std::string> displayMissing) {
    std::string problem;
    auto command = findInterface(std::move(interface), problem);
    if (command.empty()) return problem;
    setInterfaceCommand(std::move(command));
    if (displayMissing) return displayMissing;
    startAccessibility([](const std::string& sentence) {
        showNotice("Quillmark cannot read the text of other programs", sentence);
    });
    if (!startGtk()) return "the display could not be used; start it again, or log in again.";
    return std::nullopt;
}

int start(const CommandLine& line, const std::function<MainInterface()>& load) {
    auto missing = displayProblem();
    std::unique_ptr<SoleInstance> instance;
    const auto outcome = missing ? SoleInstance::Outcome::claimed : SoleInstance::claim(reopen, instance);
    if (outcome == SoleInstance::Outcome::reopened) return 0;
    if (outcome == SoleInstance::Outcome::silent) {
        printMessage(
            "it runs already but does not answer; end it (pkill quillmark-host) and start it again.");
        return cannotRun;
    }
    if (const auto problem = prepare(line.interface, std::move(missing))) {
        printMessage(*problem);
        return cannotRun;
    }
    std::error_code unknown;
    const std::string program = std::filesystem::read_symlink("/proc/self/exe", unknown).string();
    return runHost(load, std::move(instance), line, program);
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
    case CommandLine::Wish::languageModel:
        return languageModelCommand(line.languageModel);
    case CommandLine::Wish::unclear:
        printMessage(line.problem);
        return unclearCommand;
    case CommandLine::Wish::run:
        break;
    }
    trace::start(line.trace);
    return start(line, load);
}

} // namespace platform
