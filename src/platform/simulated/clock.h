#pragma once

#include "platform/main_queue.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace simulated {

using platform::Seconds;
using platform::TimePoint;

// Virtual time, with what is due in it: the world's own happenings, which take place even while the host's
// main thread is blocked, and the host's main-queue work, which does not. Time passes only when somebody
// lets it.
class Clock {
public:
    // Any thread.
    TimePoint now() const { return TimePoint{std::chrono::nanoseconds{nanoseconds_.load()}}; }
    void async(std::function<void()> work);
    void asyncAfter(Seconds delay, std::function<void()> work);

    // Something that the world does at a time, whatever the host is doing then. At one moment happenings
    // come before timers.
    void happenAfter(Seconds delay, std::function<void()> happening);

    // The main thread is blocked until then: happenings take place in time order, main-queue work waits.
    void block(Seconds duration);

    // Does the next thing that is due no later than `limit`. False when there is none.
    bool step(TimePoint limit);

    // Moves the time forward to `moment`; never back.
    void advanceTo(TimePoint moment);

    TimePoint after(Seconds delay) const;

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
    Due happenings_;
};

} // namespace simulated
