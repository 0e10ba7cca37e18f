#pragma once

#include "platform/geometry.h"

#include <ostream>

namespace platform {

inline void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.x << ' ' << rect.y << ' ' << rect.width << ' ' << rect.height;
}

} // namespace platform
