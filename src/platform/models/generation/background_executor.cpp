#include "platform/models/generation/background_executor.h"

#include "platform/task.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <memory>

namespace platform {

// Tasks wait for models far more than they work: two threads serve thousands. Never destroyed: at the end of
// the program, what still waits is of no use to anybody.
boost::asio::thread_pool& backgroundPool() {
    static auto& threads = *std::make_unique<boost::asio::thread_pool>(2).release();
    return threads;
}

void resumeInBackground(Task::Suspended task) { boost::asio::post(backgroundPool(), task); }

void Task::promise_type::Start::await_suspend(Suspended task) { resumeInBackground(task); }

} // namespace platform
