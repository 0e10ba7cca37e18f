#include "platform/simulated/clock.h"

#include <algorithm>

namespace simulated {

void Clock::async(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    ready_.push_back(std::move(work));
}

void Clock::asyncAfter(Seconds delay, std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    timers_.emplace(after(delay), std::move(work));
}

void Clock::happenAfter(Seconds delay, std::function<void()> happening) {
    const std::lock_guard lock(mutex_);
    happenings_.emplace(after(delay), std::move(happening));
}

void Clock::block(Seconds duration) {
    const TimePoint end = after(duration);
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

TimePoint Clock::after(Seconds delay) const {
    constexpr Seconds longest{1e9};
    const Seconds bounded = delay > Seconds::zero() ? std::min(delay, longest) : Seconds::zero();
    // Rounded, so that 0.02 s is exactly 20 ms.
    return now() + std::chrono::round<std::chrono::nanoseconds>(bounded);
}

void Clock::clear() {
    std::deque<std::function<void()>> ready;
    Due timers;
    Due happenings;
    const std::lock_guard lock(mutex_);
    ready.swap(ready_);
    timers.swap(timers_);
    happenings.swap(happenings_);
}

std::function<void()> Clock::takeReady() {
    const std::lock_guard lock(mutex_);
    if (ready_.empty()) return nullptr;
    auto work = std::move(ready_.front());
    ready_.pop_front();
    return work;
}

// One happening takes place, or one timer joins the queue.
bool Clock::doNextDue(TimePoint limit) {
    std::function<void()> happening;
    {
        const std::lock_guard lock(mutex_);
        const bool timerFirst =
            !timers_.empty() && (happenings_.empty() || timers_.begin()->first < happenings_.begin()->first);
        Due& first = timerFirst ? timers_ : happenings_;
        if (first.empty() || first.begin()->first > limit) return false;
        advanceTo(first.begin()->first);
        happening = std::move(first.begin()->second);
        first.erase(first.begin());
        if (timerFirst) {
            ready_.push_back(std::move(happening));
            return true;
        }
    }
    happening();
    return true;
}

} // namespace simulated
