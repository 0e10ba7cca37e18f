#pragma once

#include "platform/window.h"

#include <memory>

namespace platform {

// The window that stands for the program and carries its menu bar. Main thread only.

// Remembers it without owning it.
void setMainWindow(const std::shared_ptr<Window>& window);

// Null when there is none (any more).
std::shared_ptr<Window> mainWindow();

} // namespace platform
