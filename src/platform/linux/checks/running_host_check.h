#pragma once

#include "platform/linux/checks/finding.h"
#include "platform/linux/checks/host_report.h"

#include <optional>

namespace platform {

struct RunningHostCheck {
    Finding finding;
    std::optional<HostReport> host; // absent when none runs or it does not answer
};

// Asks it, and waits up to five seconds for the answer.
RunningHostCheck checkRunningHost();

} // namespace platform
