#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// The interface that a host with this command line would start: a program and its arguments, or none for the
// usual one.
Finding checkInterface(const std::vector<std::string>& command);

} // namespace platform
