#pragma once

#include "platform/geometry.h"
#include "platform/screen.h"

#include <optional>

namespace platform {

// The screen that holds the middle of `area`, else the nearest one; absent when there is no screen.
std::optional<Screen> screenNearest(const Rect& area);

} // namespace platform
