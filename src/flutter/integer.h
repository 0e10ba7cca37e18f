// An integer value of either width. Internal to this room.
#pragma once

#include "flutter/encodable_value.h"

#include <cstdint>
#include <optional>

namespace flutter {

// Absent when the value is not an integer.
inline std::optional<std::int64_t> integer(const EncodableValue& value) {
    if (const auto* narrow = value.getIf<std::int32_t>()) return *narrow;
    if (const auto* wide = value.getIf<std::int64_t>()) return *wide;
    return std::nullopt;
}

} // namespace flutter
