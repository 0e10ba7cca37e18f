#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// Each waits some seconds for a bus that hangs. Nothing is switched on by looking.
Finding checkSessionBus();
Finding checkAccessibility();

} // namespace platform
