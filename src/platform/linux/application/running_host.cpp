#include "platform/linux/application/running_host.h"

#include "platform/linux/application/exit_status.h"
#include "platform/linux/application/own_program.h"
#include "platform/linux/base/environment.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/interface/program.h"
#include "platform/linux/x11/base/display_check.h"
#include "platform/linux/x11/instance/running_instance.h"

#include <csignal>
#include <iostream>
#include <string>

namespace platform {
namespace {

using State = InstanceCall::State;
using Outcome = InstanceAnswer::Outcome;

InstanceCaller caller(const CommandLine& line) {
    std::string ignored;
    const auto command = line.interface.empty() ? line.interface : findInterface(line.interface, ignored);
    return {environmentVariable("DESKTOP_STARTUP_ID"), command.empty() ? line.interface : command};
}

std::string silence(const InstanceCall& call) {
    if (!call.process) return "it runs already but does not answer; log out and in again to end it.";
    const std::string process = std::to_string(*call.process);
    return "it runs already (process " + process + ") but does not answer; end it with \"kill -KILL " +
           process + "\" and start it again.";
}

} // namespace

int askRunningHost(const CommandLine& line, const Report& report) {
    if (const auto problem = displayProblem()) {
        report.say(*problem);
        return cannotRun;
    }
    const auto call = askRunningInstance(line.request, caller(line));
    if (call.state == State::none) {
        report.say("no host runs on this display; start one first: quillmark-host.");
        return noHostRuns;
    }
    if (call.state == State::silent) {
        report.say(silence(call));
        return cannotRun;
    }
    if (call.answer.outcome == Outcome::refused) {
        report.say(call.answer.line);
        return cannotRun;
    }
    if (!call.answer.line.empty()) std::cout << "quillmark-host: " << call.answer.line << std::endl;
    return 0;
}

std::optional<int> leaveToRunningHost(const CommandLine& line, const Report& report, char** arguments) {
    const auto call =
        askRunningInstance(line.background ? InstanceRequest::greet : InstanceRequest::show, caller(line));
    if (call.state == State::none) return std::nullopt;
    if (call.state == State::answered) {
        if (call.answer.outcome == Outcome::done)
            printMessage(call.answer.line);
        else
            report.say(call.answer.line);
        return 0;
    }
    if (!call.process) {
        report.say(silence(call));
        return cannotRun;
    }
    if (!report.offersEnd(silence(call))) return cannotRun;
    kill(*call.process, SIGKILL); // a stopped process takes no other signal
    startAfresh(arguments);
    return cannotRun;
}

} // namespace platform
