#pragma once

#include "platform/window.h"

#include <memory>

namespace platform {

// The window that carries the menu bar and stands for the program. Main thread only.
void setMainWindow(const std::shared_ptr<Window>& window);
// Null when there is none (any more).
std::shared_ptr<Window> mainWindow();

// From now on the end of the desktop session is a termination like any other; a session that waits for its
// answer is told on leaving that it may end.
void joinSession();
void leaveSession();

} // namespace platform
