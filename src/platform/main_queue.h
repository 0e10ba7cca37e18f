#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

// The main thread's queue, clock and blocking pause.
//
// Every entry into the host (channel message, hot key, delegate call, timer) arrives through this queue:
// first in, first out, one at a time, on the main thread. An entry that blocks, for instance until another
// program delivers its pasteboard data, holds up all entries behind it.
namespace platform {

using Seconds = std::chrono::duration<double>;
using TimePoint = std::chrono::time_point<std::chrono::steady_clock, std::chrono::nanoseconds>;

class MainQueue {
public:
    // Queues `work` behind everything queued so far and returns at once. Any thread.
    static void async(std::function<void()> work);

    // Queues `work` once `delay` has passed. Any thread. Cannot be cancelled.
    static void asyncAfter(Seconds delay, std::function<void()> work);

    // The same for work on an object that may have been destroyed by then: `work` does not run once nothing
    // owns `life` any more. The object passes a token that it owns itself, such as a `std::shared_ptr<char>`.
    static void async(std::weak_ptr<const void> life, std::function<void()> work);
    static void asyncAfter(Seconds delay, std::weak_ptr<const void> life, std::function<void()> work);

private:
    static std::function<void()> whileAlive(std::weak_ptr<const void> life, std::function<void()> work);
};

inline std::function<void()> MainQueue::whileAlive(std::weak_ptr<const void> life,
                                                   std::function<void()> work) {
    return [life = std::move(life), work = std::move(work)] {
        if (!life.expired()) work();
    };
}

inline void MainQueue::async(std::weak_ptr<const void> life, std::function<void()> work) {
    async(whileAlive(std::move(life), std::move(work)));
}

inline void MainQueue::asyncAfter(Seconds delay, std::weak_ptr<const void> life, std::function<void()> work) {
    asyncAfter(delay, whileAlive(std::move(life), std::move(work)));
}

// The current time of a clock that never goes back.
TimePoint now();

// Blocks the calling thread; the main queue's entries wait meanwhile.
void usleep(std::uint32_t microseconds);

} // namespace platform
