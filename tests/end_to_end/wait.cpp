#include "end_to_end/wait.h"

#include <thread>

namespace e2e {

bool waitUntil(const std::function<bool()>& condition, milliseconds limit) {
    const auto end = Clock::now() + limit;
    while (!condition()) {
        if (Clock::now() >= end) return false;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return true;
}

} // namespace e2e
