#pragma once

#include "platform/geometry.h"

#include <optional>

namespace platform {

// One screen at the moment of the query. A plain value. Main thread only.
class Screen {
public:
    explicit Screen(Rect visibleFrame) : visibleFrame_(visibleFrame) {}

    // The screen that the user works on; absent when the desktop has none.
    static std::optional<Screen> mainScreen();

    // The area without panels and docks.
    Rect visibleFrame() const { return visibleFrame_; }

private:
    Rect visibleFrame_;
};

} // namespace platform
