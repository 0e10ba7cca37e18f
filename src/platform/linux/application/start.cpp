#include "platform/linux/application/start.h"

#include "platform/linux/accessibility/trust.h"
#include "platform/linux/application/control.h"
#include "platform/linux/application/exit_status.h"
#include "platform/linux/application/gtk_start.h"
#include "platform/linux/application/report.h"
#include "platform/linux/application/run.h"
#include "platform/linux/application/running_host.h"
#include "platform/linux/base/child_process.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/interface/program.h"
#include "platform/linux/window/notice.h"
#include "platform/linux/x11/base/display_check.h"

#include <unistd.h>

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

// As a fresh process, with nothing left of this one.
void beginAnew(const std::string& program, char** arguments) {
    undoHostSettings();
    execv(program.c_str(), arguments);
}

} // namespace

int startHost(const CommandLine& line, const Report& report, char** arguments,
              const std::function<MainInterface()>& load) {
    const std::string program = ownProgram();
    if (const auto problem = displayProblem()) {
        report.say(*problem);
        return cannotRun;
    }
    std::unique_ptr<SoleInstance> instance;
    while (!(instance = SoleInstance::take(handleRequest)))
        if (const auto status = leaveToRunningHost(line, report)) return *status;

    if (const auto problem = prepare(line)) {
        instance.reset();
        if (report.offersStart(*problem)) beginAnew(program, arguments);
        return cannotRun;
    }
    const auto end = runHost(load, std::move(instance), line, program);
    if (end.message.empty()) return end.status;
    if (end.status == 0)
        printMessage(end.message);
    else if (report.offersStart(end.message))
        beginAnew(program, arguments);
    return end.status;
}

} // namespace platform
