#include "platform/main_queue.h"

#include "platform/never_destroyed.h"

#include <glib.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace platform {
namespace {

using Work = std::function<void()>;

struct Timer {
    TimePoint due;
    std::uint64_t order = 0; // of two that fall due together, the one asked for first goes first
    Work work;
};

bool later(const Timer& left, const Timer& right) {
    return left.due != right.due ? left.due > right.due : left.order > right.order;
}

// One source of the main loop for all entries and timers. Its ready time wakes the loop: at once while
// entries wait, else when the next timer falls due. GLib does not dispatch a source from inside its own
// dispatch, so entries wait while one of them runs a main loop of its own.
class Queue {
public:
    Queue() {
        static GSourceFuncs functions{nullptr, nullptr, &Queue::dispatch, nullptr, nullptr, nullptr};
        source_ = g_source_new(&functions, sizeof(GSource));
        g_source_set_static_name(source_, "main queue");
        // GTK draws at this priority too, so it gets turns however many entries arrive.
        g_source_set_priority(source_, G_PRIORITY_HIGH_IDLE + 20);
        g_source_attach(source_, nullptr);
    }

    void add(Work work) {
        const std::lock_guard lock(mutex_);
        arrived_.push_back(std::move(work));
        wakeAt(0);
    }

    void addTimer(TimePoint due, Work work) {
        const std::lock_guard lock(mutex_);
        timers_.push_back({due, nextOrder_++, std::move(work)});
        std::push_heap(timers_.begin(), timers_.end(), later);
        wakeAt(microseconds(timers_.front().due));
    }

    // Never destroyed, so that a thread that outlives the main loop may still post.
    static Queue& shared() {
        static const NeverDestroyed<Queue> queue;
        return *queue;
    }

private:
    // How long entries may run before the toolkit gets a turn, so that a flood of them does not freeze the
    // window.
    static constexpr auto longestTurn = std::chrono::milliseconds(8);
    static constexpr std::int64_t never = -1;

    // Rounded up: a timer is never early.
    static std::int64_t microseconds(TimePoint time) {
        return std::chrono::ceil<std::chrono::microseconds>(time.time_since_epoch()).count();
    }

    void wakeAt(std::int64_t time) {
        if (readyTime_ != never && readyTime_ <= time) return;
        readyTime_ = time;
        g_source_set_ready_time(source_, time);
    }

    static gboolean dispatch(GSource*, GSourceFunc, gpointer) noexcept {
        shared().runTurn();
        return G_SOURCE_CONTINUE;
    }

    void runTurn() {
        takeBatch();
        const TimePoint end = now() + longestTurn;
        while (!batch_.empty()) {
            const Work work = std::move(batch_.front());
            batch_.pop_front();
            work();
            if (now() >= end) break;
        }
        sleepUntilNeeded();
    }

    void takeBatch() {
        const std::lock_guard lock(mutex_);
        readyTime_ = 0; // while the batch runs, other threads need not wake the loop
        for (const TimePoint time = now(); !timers_.empty() && timers_.front().due <= time;) {
            std::pop_heap(timers_.begin(), timers_.end(), later);
            arrived_.push_back(std::move(timers_.back().work));
            timers_.pop_back();
        }
        if (batch_.empty()) batch_.swap(arrived_);
    }

    void sleepUntilNeeded() {
        const std::lock_guard lock(mutex_);
        if (batch_.empty() && arrived_.empty()) {
            readyTime_ = timers_.empty() ? never : microseconds(timers_.front().due);
        }
        g_source_set_ready_time(source_, readyTime_);
    }

    GSource* source_ = nullptr;
    std::deque<Work> batch_; // main thread only

    std::mutex mutex_;
    std::deque<Work> arrived_;
    std::vector<Timer> timers_; // a heap, the next one first
    std::uint64_t nextOrder_ = 0;
    std::int64_t readyTime_ = never;
};

} // namespace

void MainQueue::async(std::function<void()> work) { Queue::shared().add(std::move(work)); }

void MainQueue::asyncAfter(Seconds delay, std::function<void()> work) {
    constexpr Seconds longest{1e9};
    const Seconds wait = delay > Seconds::zero() ? std::min(delay, longest) : Seconds::zero();
    Queue::shared().addTimer(now() + std::chrono::duration_cast<std::chrono::nanoseconds>(wait),
                             std::move(work));
}

TimePoint now() { return std::chrono::steady_clock::now(); }

} // namespace platform
