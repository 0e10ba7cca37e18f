#include "platform/linux/application/start.h"

#include "platform/linux/accessibility/trust.h"
#include "platform/linux/application/control.h"
#include "platform/linux/application/exit_status.h"
#include "platform/linux/application/gtk_start.h"
#include "platform/linux/application/run.h"
#include "platform/linux/application/running_host.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/interface/program.h"
#include "platform/linux/window/notice.h"
#include "platform/linux/x11/base/display_check.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace platform {
namespace {

std::string ownProgram() {
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown).string();
}

// A sentence when something is missing that the host needs.
std::optional<std::string> prepare(const CommandLine& line) {
    std::string problem;
    auto command = findInterface(line.interface, problem);
    if (command.empty()) return problem;
    setInterfaceCommand(std::move(command));
    startAccessibility([](const std::string& sentence) {
        showNotice("Quillmark cannot read the text of other programs", sentence);
    });
    if (!startGtk()) return "the display could not be used; start it again, or log in again.";
    return std::nullopt;
}

} // namespace

int startHost(const CommandLine& line, const std::function<MainInterface()>& load) {
    const std::string program = ownProgram();
    if (const auto problem = displayProblem()) {
        printMessage(*problem);
        return cannotRun;
    }
    std::unique_ptr<SoleInstance> instance;
    while (!(instance = SoleInstance::take(handleRequest)))
        if (const auto status = leaveToRunningHost(line)) return *status;

    if (const auto problem = prepare(line)) {
        printMessage(*problem);
        return cannotRun;
    }
    return runHost(load, std::move(instance), line, program);
}

} // namespace platform
