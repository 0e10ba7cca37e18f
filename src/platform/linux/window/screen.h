#pragma once

#include "platform/geometry.h"
#include "platform/screen.h"

#include <optional>

namespace platform {

// The screen that holds the middle of `area`, else the nearest one; absent when there is no screen.
std::optional<Screen> screenNearest(const Rect& area);

// `frame`, made no larger than `area` and moved into it as little as needed.
Rect fitted(Rect frame, const Rect& area);

// `frame`, fitted into the screen it is on or nearest to; unchanged when there is no screen.
Rect onScreen(const Rect& frame);

} // namespace platform
