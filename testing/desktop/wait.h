// Waiting for conditions instead of times.
#pragma once

#include <chrono>
#include <functional>

namespace testbed {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// What a loaded machine may take for anything that does happen.
inline constexpr milliseconds patience{10'000};

// Asks until it is true; false when the time is over first.
bool waitUntil(const std::function<bool()>& condition, milliseconds limit = patience);

} // namespace testbed
