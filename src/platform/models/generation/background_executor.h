// The few threads that all tasks share. What runs there must be short and must not block. Any thread.
#pragma once

#include "platform/task.h"

#include <functional>

namespace boost::asio {
class thread_pool;
}

namespace platform {

// The task goes on, on one of these threads.
void resumeInBackground(Task::Suspended task);

boost::asio::thread_pool& backgroundPool();

// Does what may block for some milliseconds, one piece of work after the other, on a thread of its own.
void runBlocking(std::function<void()> work);

} // namespace platform
