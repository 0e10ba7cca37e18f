#pragma once

#include "platform/main_queue.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace platform {

// Runs the main loop until `done` holds; fails the test when it never does.
template <typename Condition>
void runUntil(Condition done) {
    using namespace std::chrono_literals;
    const TimePoint deadline = now() + 10s;
    while (!done()) {
        ASSERT_LT(now(), deadline) << "the main loop never got there";
        MainQueue::asyncAfter(2ms, [] {}); // a condition may come true without an event
        g_main_context_iteration(nullptr, TRUE);
    }
}

} // namespace platform
