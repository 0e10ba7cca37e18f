#pragma once

#include "platform/main_queue.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace platform {

// Runs the main loop until `done` holds; fails the test, and is false, when it never does.
template <typename Condition>
bool runUntil(Condition done) {
    using namespace std::chrono_literals;
    const TimePoint deadline = now() + 10s;
    while (!done()) {
        if (now() >= deadline) {
            ADD_FAILURE() << "the condition never came true while the main loop ran";
            return false;
        }
        MainQueue::asyncAfter(2ms, [] {}); // a condition may come true without an event
        g_main_context_iteration(nullptr, TRUE);
    }
    return true;
}

// Runs the main loop until it has nothing left to do: what was sent so far has been handled then.
inline void settle() {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

} // namespace platform
