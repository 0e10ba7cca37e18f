#pragma once

#include "platform/linux/checks/finding.h"
#include "platform/linux/checks/host_report.h"

#include <optional>

namespace platform {

// Asks the running host, where there is one, else tries whether the usual combination is free. Needs an X
// server.
Finding checkHotKey(const std::optional<HostReport>& host);

} // namespace platform
