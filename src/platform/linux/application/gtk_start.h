#pragma once

namespace platform {

// Prepares GTK for this process, on the X server that DISPLAY names. Once, on the main thread, before any
// window or menu is made. False when it cannot use that server.
bool startGtk();

} // namespace platform
