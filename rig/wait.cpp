#include "rig/wait.h"

#include <thread>

namespace rig {

bool waitUntil(const std::function<bool()>& condition, milliseconds limit) {
    const auto end = Clock::now() + limit;
    while (!condition()) {
        if (Clock::now() >= end) return false;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return true;
}

} // namespace rig
