#include "platform/models/generation/background_executor.h"

#include "platform/never_destroyed.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <utility>

namespace platform {

// Tasks wait for models far more than they work: two threads serve thousands.
boost::asio::thread_pool& backgroundPool() {
    static const NeverDestroyed<boost::asio::thread_pool> threads(2);
    return *threads;
}

void resumeInBackground(Task::Suspended task) { boost::asio::post(backgroundPool(), task); }

void runBlocking(std::function<void()> work) {
    static const NeverDestroyed<boost::asio::thread_pool> thread(1);
    boost::asio::post(*thread, std::move(work));
}

void Task::promise_type::Start::await_suspend(Suspended task) { resumeInBackground(task); }

} // namespace platform
