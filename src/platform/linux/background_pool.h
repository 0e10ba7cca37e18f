#pragma once

namespace boost::asio {
class thread_pool;
}

namespace platform {

// The few threads that all background work shares, sockets included. What runs there must be short and must
// not block. Any thread.
boost::asio::thread_pool& backgroundPool();

} // namespace platform
