// The few threads that all background work shares, sockets included. What runs there must be short and must
// not block. Any thread.
#pragma once

#include "platform/task.h"

namespace boost::asio {
class thread_pool;
}

namespace platform {

// The task goes on, on one of these threads.
void resumeInBackground(Task::Suspended task);

boost::asio::thread_pool& backgroundPool();

} // namespace platform
