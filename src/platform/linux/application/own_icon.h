#pragma once

namespace platform {

// The icon of every window that the program opens from now on, from the desktop's icons or from the program's
// own files. After GTK has started.
void useOwnIcon();

} // namespace platform
