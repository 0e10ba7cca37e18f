#include "platform/simulated/task.h"

#include "platform/simulated/world.h"

#include <utility>

namespace simulated {

WaitingTask::~WaitingTask() {
    if (const auto task = take()) task.destroy();
}

void WaitingTask::resume() {
    if (const auto task = take()) task.resume();
}

platform::Task::Suspended WaitingTask::take() { return std::exchange(task_, nullptr); }

std::weak_ptr<WaitingTask> resumeAfter(Seconds delay, platform::Task::Suspended task) {
    const auto waiting = std::make_shared<WaitingTask>(task);
    World::current().clock.schedule(delay, [waiting] { waiting->resume(); });
    return waiting;
}

} // namespace simulated

namespace platform {

void Task::promise_type::Start::await_suspend(Suspended task) { simulated::resumeAfter({}, task); }

} // namespace platform
