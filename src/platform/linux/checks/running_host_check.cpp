#include "platform/linux/checks/running_host_check.h"

#include "platform/linux/x11/instance/running_instance.h"

namespace platform {

using Grade = Finding::Grade;

RunningHostCheck checkRunningHost() {
    const auto call = askRunningInstance(InstanceRequest::report, {});
    switch (call.state) {
    case InstanceCall::State::none:
        return {{"host", Grade::good, "does not run now", "", ""}, std::nullopt};
    case InstanceCall::State::silent:
        return {{"host", Grade::missing, "runs but does not answer",
                 "The hot key does nothing until the host is ended and started again.",
                 call.process ? "Run: kill -KILL " + std::to_string(*call.process) + ", then start it again."
                              : "Log out and in again."},
                std::nullopt};
    case InstanceCall::State::answered:
        break;
    }
    if (call.answer.outcome == InstanceAnswer::Outcome::refused)
        return {{"host", Grade::degraded, "runs, of another version",
                 "What it is made of may not fit together.", "Quit it and start it again."},
                std::nullopt};
    auto report = decodeHostReport(call.answer.line);
    const std::string found =
        "runs (process " + std::to_string(report.process) + ") with " + report.interface;
    return {{"host", Grade::good, found, "", ""}, std::move(report)};
}

} // namespace platform
