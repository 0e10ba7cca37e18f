#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// Nothing else of the X server can be looked at when this is missing.
Finding checkDisplayServer();

} // namespace platform
