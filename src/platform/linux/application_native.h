#pragma once

#include "platform/window.h"

#include <memory>

namespace platform {

// The window that carries the menu bar and stands for the program. Main thread only.
void setMainWindow(const std::shared_ptr<Window>& window);

} // namespace platform
