#include "platform/simulated/task.h"

#include "platform/simulated/world.h"

#include <utility>

namespace simulated {

PutAside::~PutAside() {
    if (const auto task = take()) task.destroy();
}

void PutAside::resume() {
    if (const auto task = take()) task.resume();
}

platform::Task::Suspended PutAside::take() { return std::exchange(task_, nullptr); }

std::weak_ptr<PutAside> resumeAfter(Seconds delay, platform::Task::Suspended task) {
    const auto aside = std::make_shared<PutAside>(task);
    World::current().clock.happenAfter(delay, [aside] { aside->resume(); });
    return aside;
}

} // namespace simulated

namespace platform {

void Task::promise_type::Start::await_suspend(Suspended task) { simulated::resumeAfter({}, task); }

} // namespace platform
