#include "platform/simulated/clock.h"

#include <algorithm>

namespace simulated {

void Clock::async(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    ready_.push_back(std::move(work));
}

void Clock::asyncAfter(Seconds delay, std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    timers_.emplace(timeAfter(delay), std::move(work));
}

void Clock::schedule(Seconds delay, std::function<void()> event) {
    const std::lock_guard lock(mutex_);
    events_.emplace(timeAfter(delay), std::move(event));
}

void Clock::block(Seconds duration) {
    const TimePoint end = timeAfter(duration);
    while (doNextDue(end)) {
    }
    advanceTo(end);
}

bool Clock::step(TimePoint limit) {
    while (doNextDue(now())) {
    }
    if (const auto work = takeReady()) {
        work();
        return true;
    }
    return doNextDue(limit);
}

void Clock::advanceTo(TimePoint moment) {
    nanoseconds_ = std::max(nanoseconds_.load(), moment.time_since_epoch().count());
}

TimePoint Clock::timeAfter(Seconds delay) const {
    constexpr Seconds longestDelay{1e9};
    const Seconds bounded = delay > Seconds::zero() ? std::min(delay, longestDelay) : Seconds::zero();
    // Rounded, so that 0.02 s is exactly 20 ms.
    return now() + std::chrono::round<std::chrono::nanoseconds>(bounded);
}

void Clock::clear() {
    std::deque<std::function<void()>> ready;
    Due timers;
    Due events;
    const std::lock_guard lock(mutex_);
    ready.swap(ready_);
    timers.swap(timers_);
    events.swap(events_);
}

std::function<void()> Clock::takeReady() {
    const std::lock_guard lock(mutex_);
    if (ready_.empty()) return nullptr;
    auto work = std::move(ready_.front());
    ready_.pop_front();
    return work;
}

// One event takes place, or one timer's work joins the queue.
bool Clock::doNextDue(TimePoint limit) {
    std::function<void()> due;
    {
        const std::lock_guard lock(mutex_);
        const bool timerFirst =
            !timers_.empty() && (events_.empty() || timers_.begin()->first < events_.begin()->first);
        Due& first = timerFirst ? timers_ : events_;
        if (first.empty() || first.begin()->first > limit) return false;
        advanceTo(first.begin()->first);
        due = std::move(first.begin()->second);
        first.erase(first.begin());
        if (timerFirst) {
            ready_.push_back(std::move(due));
            return true;
        }
    }
    due();
    return true;
}

} // namespace simulated
