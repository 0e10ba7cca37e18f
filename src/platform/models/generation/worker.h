#pragma once

#include <functional>

namespace platform {

// A thread of its own that does what it is handed, one piece of work after the other: for what may only be
// used from one thread, or takes too long for the threads that all share. It lasts until the program ends.
// Any thread.
class Worker {
public:
    Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void async(std::function<void()> work);

private:
    struct Queue;

    [[noreturn]] static void work(Queue& queue);

    Queue& queue_;
};

} // namespace platform
