#pragma once

#include "platform/window.h"

#include <memory>

namespace platform {

// The window that carries the menu bar and stands for the program. Main thread only.
void setMainWindow(const std::shared_ptr<Window>& window);
// Null when there is none (any more).
std::shared_ptr<Window> mainWindow();

} // namespace platform
