#pragma once

#include "platform/linux/x11/windows/properties.h"

namespace platform::x11 {

// A coloured frame over the edges of the window that is in front when it is made, for as long as it lives.
// Neither the window manager nor the pointer notices it. Main thread only.
class [[nodiscard]] Highlight {
public:
    Highlight();
    ~Highlight();
    Highlight(const Highlight&) = delete;
    Highlight& operator=(const Highlight&) = delete;

private:
    WindowId frame_ = 0; // 0: no window is in front, or it is too small
};

} // namespace platform::x11
