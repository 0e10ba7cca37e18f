#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// The folders that the host writes to, and who else may.
Finding checkFiles();

} // namespace platform
