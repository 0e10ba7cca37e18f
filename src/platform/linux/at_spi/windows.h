#pragma once

#include "platform/linux/at_spi/applications.h"

#include <optional>
#include <vector>

// The windows of one program on the accessibility bus. Main thread only.
namespace platform::at_spi {

// All windows; and what library the program is built on, in `application`, if that was not known.
std::vector<Object> windowsOf(Bus& bus, Application& application);

// The program's active window. Absent when it has none. Chromium has none while nobody listens to its events.
std::optional<Object> activeWindow(Bus& bus, Application& application);
void noteActive(Application& application, const Object& window);
// Absent when it was not found within the last milliseconds.
std::optional<Object> activeWindowJustSeen(const Application& application);
std::optional<Object> activeAmong(Bus& bus, const std::vector<Object>& windows);

// What `activeWindow` found last, if it is still on the screen.
std::optional<Object> lastActiveWindow(Bus& bus, Application& application);

// Whether `object` is in `window`, which is one of `windows`.
bool isInside(Bus& bus, const Object& object, const Object& window, const std::vector<Object>& windows);

} // namespace platform::at_spi
