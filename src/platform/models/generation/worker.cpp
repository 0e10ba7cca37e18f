#include "platform/models/generation/worker.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace platform {

struct Worker::Queue {
    std::mutex mutex;
    std::condition_variable filled;
    std::deque<std::function<void()>> work;
};

// The thread is never told to end, so that what it uses is never destroyed either.
Worker::Worker() : queue_(*std::make_unique<Queue>().release()) {
    std::thread(work, std::ref(queue_)).detach();
}

void Worker::async(std::function<void()> work) {
    {
        const std::lock_guard lock(queue_.mutex);
        queue_.work.push_back(std::move(work));
    }
    queue_.filled.notify_one();
}

void Worker::work(Queue& queue) {
    for (;;) {
        std::unique_lock lock(queue.mutex);
        queue.filled.wait(lock, [&] { return !queue.work.empty(); });
        const auto next = std::move(queue.work.front());
        queue.work.pop_front();
        lock.unlock();
        next();
    }
}

} // namespace platform
