#pragma once

#include "platform/linux/checks/finding.h"

#include <optional>

namespace platform {

// Both need an X server.
Finding checkWindowManager();

// The name of the one that runs; absent when none does.
std::optional<std::string> runningWindowManager();

} // namespace platform
