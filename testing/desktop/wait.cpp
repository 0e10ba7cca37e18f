#include "testing/desktop/wait.h"

#include <algorithm>
#include <thread>

namespace testbed {

bool waitUntil(const std::function<bool()>& condition, milliseconds limit) {
    const auto end = Clock::now() + limit;
    // Soon at first, so that what comes at once is seen at once; then at ease, for two slow cores.
    Clock::duration pause = std::chrono::microseconds(250);
    while (!condition()) {
        if (Clock::now() >= end) return false;
        std::this_thread::sleep_for(pause);
        pause = std::min<Clock::duration>(2 * pause, milliseconds(5));
    }
    return true;
}

} // namespace testbed
