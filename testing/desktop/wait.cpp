#include "testing/desktop/wait.h"

#include <algorithm>
#include <thread>

namespace testbed {

bool waitUntil(const std::function<bool()>& condition, milliseconds limit) {
    const auto end = Clock::now() + limit;
    // Short pauses first, to notice a quick change early; longer ones then, to leave the processor to others.
    Clock::duration pause = std::chrono::microseconds(250);
    while (!condition()) {
        if (Clock::now() >= end) return false;
        std::this_thread::sleep_for(pause);
        pause = std::min<Clock::duration>(2 * pause, milliseconds(5));
    }
    return true;
}

} // namespace testbed
