#pragma once

#include "platform/geometry.h"

#include <optional>

namespace platform {

// One screen, as it was when asked for. A plain value. Main thread only.
class Screen {
public:
    explicit Screen(Rect visibleFrame) : visibleFrame_(visibleFrame) {}

    // The screen with the user's attention; absent when there is none at all.
    static std::optional<Screen> mainScreen();

    // The area without panels, docks and the like.
    Rect visibleFrame() const { return visibleFrame_; }

private:
    Rect visibleFrame_;
};

} // namespace platform
