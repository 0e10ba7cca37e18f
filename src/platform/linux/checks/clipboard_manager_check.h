#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// Needs an X server.
Finding checkClipboardManager();

} // namespace platform
