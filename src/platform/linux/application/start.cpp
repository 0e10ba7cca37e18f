#include "platform/linux/application/start.h"

#include "platform/linux/accessibility/trust.h"
#include "platform/linux/application/control.h"
#include "platform/linux/application/exit_status.h"
#include "platform/linux/application/gtk_start.h"
#include "platform/linux/application/own_program.h"
#include "platform/linux/application/report.h"
#include "platform/linux/application/run.h"
#include "platform/linux/application/running_host.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/interface/program.h"
#include "platform/linux/window/notice.h"
#include "platform/linux/x11/base/display_check.h"

#include <optional>
#include <utility>

namespace platform {
namespace {

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

int startHost(const CommandLine& line, const Report& report, char** arguments,
              const std::function<MainInterface()>& load) {
    const std::string& program = ownProgram();
    if (const auto problem = displayProblem()) {
        report.say(*problem);
        return cannotRun;
    }
    std::unique_ptr<SoleInstance> instance;
    while (!(instance = SoleInstance::take(handleRequest)))
        if (const auto status = leaveToRunningHost(line, report, arguments)) return *status;

    if (const auto problem = prepare(line)) {
        instance.reset();
        if (report.offersStart(*problem)) startAfresh(arguments);
        return cannotRun;
    }
    const auto end = runHost(load, std::move(instance), line, program);
    if (end.message.empty()) return end.status;
    if (end.status == 0)
        printMessage(end.message);
    else if (report.offersStart(end.message))
        startAfresh(arguments);
    return end.status;
}

} // namespace platform
