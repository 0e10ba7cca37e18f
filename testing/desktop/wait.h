// Waiting for conditions instead of times.
#pragma once

#include <chrono>
#include <functional>

namespace testbed {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// How long any reaction may take on a busy machine.
inline constexpr milliseconds reactionLimit{10'000};

// Asks until it is true; false when the time is over first.
bool waitUntil(const std::function<bool()>& condition, milliseconds limit = reactionLimit);

} // namespace testbed
