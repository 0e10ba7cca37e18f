#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// Waits for two seconds at most.
Finding checkLanguageModel();

} // namespace platform
