#pragma once

#include "platform/main_queue.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>

namespace simulated {

using platform::Seconds;
using platform::TimePoint;

// Virtual time and what is due in it: events of the world, which take place even while the host's main thread
// is blocked, and the host's main-queue work, which waits then. Time passes only in block(), step() and
// advanceTo().
class Clock {
public:
    // Any thread.
    TimePoint now() const { return TimePoint{std::chrono::nanoseconds{nanoseconds_.load()}}; }
    void async(std::function<void()> work);
    void asyncAfter(Seconds delay, std::function<void()> work);

    // An event of the world: it takes place after `delay`, whatever the host is doing then. Of an event and a
    // timer that are due at the same time, the event comes first.
    void schedule(Seconds delay, std::function<void()> event);

    // The main thread is blocked for that long: events take place in time order, main-queue work waits.
    void block(Seconds duration);

    // Does the next thing that is due no later than `limit`. False when there is none.
    bool step(TimePoint limit);

    // Moves the time forward to `moment`; never back.
    void advanceTo(TimePoint moment);

    // Now and `delay`; a negative delay counts as none.
    TimePoint timeAfter(Seconds delay) const;

    // Drops everything that has not run.
    void clear();

private:
    using Due = std::multimap<TimePoint, std::function<void()>>;

    std::function<void()> takeReady();
    bool doNextDue(TimePoint limit);

    std::atomic<std::int64_t> nanoseconds_ = 0;
    std::mutex mutex_;
    std::deque<std::function<void()>> ready_;
    Due timers_;
    Due events_;
};

} // namespace simulated
