#include "platform/main_queue.h"

#include "platform/linux/base/file_descriptor.h"
#include "platform/never_destroyed.h"

#include <glib.h>
#include <sys/eventfd.h>

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

// One source of the main loop for all entries and timers. An event descriptor wakes the loop for what another
// thread adds, its ready time while entries are left and when the next timer falls due. (GLib's own way to
// wake a loop holds its lock meanwhile, and the main thread, awake at once, would have to wait for it.) GLib
// does not dispatch a source from inside its own dispatch, so entries wait while one of them runs a main loop
// of its own.
class Queue {
public:
    Queue() : wakes_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        static GSourceFuncs functions{nullptr, nullptr, &Queue::dispatch, nullptr, nullptr, nullptr};
        source_ = g_source_new(&functions, sizeof(GSource));
        g_source_set_static_name(source_, "main queue");
        // GTK draws at this priority too, so it gets turns however many entries arrive.
        g_source_set_priority(source_, G_PRIORITY_HIGH_IDLE + 20);
        g_source_add_unix_fd(source_, wakes_.number(), G_IO_IN);
        g_source_attach(source_, nullptr);
    }

    void add(Work work) {
        std::unique_lock lock(mutex_);
        arrived_.push_back(std::move(work));
        wake(std::move(lock));
    }

    void addTimer(TimePoint due, Work work) {
        std::unique_lock lock(mutex_);
        const bool isNext = timers_.empty() || due < timers_.front().due;
        timers_.push_back({due, nextOrder_++, std::move(work)});
        std::push_heap(timers_.begin(), timers_.end(), later);
        if (isNext) wake(std::move(lock));
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

    void wake(std::unique_lock<std::mutex> lock) {
        if (std::exchange(isAwake_, true)) return;
        lock.unlock();
        eventfd_write(wakes_.number(), 1);
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
        eventfd_t count = 0;
        eventfd_read(wakes_.number(), &count); // before the look at what has arrived
        const std::lock_guard lock(mutex_);
        isAwake_ = true;
        for (const TimePoint time = now(); !timers_.empty() && timers_.front().due <= time;) {
            std::pop_heap(timers_.begin(), timers_.end(), later);
            arrived_.push_back(std::move(timers_.back().work));
            timers_.pop_back();
        }
        if (batch_.empty()) batch_.swap(arrived_);
    }

    void sleepUntilNeeded() {
        std::unique_lock lock(mutex_);
        isAwake_ = !batch_.empty() || !arrived_.empty();
        const auto next = isAwake_ ? 0 : timers_.empty() ? never : microseconds(timers_.front().due);
        lock.unlock();
        g_source_set_ready_time(source_, next);
    }

    FileDescriptor wakes_;
    GSource* source_ = nullptr;
    std::deque<Work> batch_; // main thread only

    std::mutex mutex_;
    std::deque<Work> arrived_;
    std::vector<Timer> timers_; // a heap, the next one first
    std::uint64_t nextOrder_ = 0;
    bool isAwake_ = false; // a turn is under way or will come, and looks at everything above
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
