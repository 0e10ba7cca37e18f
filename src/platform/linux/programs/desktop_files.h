#pragma once

#include "platform/linux/x11/windows/window_class.h"

#include <optional>
#include <string>

// The installed programs as the desktop lists them: one desktop file each (freedesktop.org Desktop Entry
// Specification). Main thread only. Programs installed later are known once the main loop has run.
namespace platform {

// The identifier (file name without ".desktop") of the program that shows windows of this class.
std::optional<std::string> desktopFileOf(const x11::WindowClass& windowClass);

// The name, in the user's language, of the program with this identifier.
std::optional<std::string> desktopFileName(const std::string& identifier);

} // namespace platform
