#pragma once

#include "platform/simulated/clock.h"
#include "platform/task.h"

#include <memory>

namespace simulated {

// A task that waits to be resumed. Owns the task: destroyed before that, it destroys the task too.
class WaitingTask {
public:
    explicit WaitingTask(platform::Task::Suspended task) : task_(task) {}
    ~WaitingTask();
    WaitingTask(const WaitingTask&) = delete;
    WaitingTask& operator=(const WaitingTask&) = delete;

    // Runs the task until it waits again or ends. Does nothing when the task was resumed or taken before.
    void resume();
    // Hands the task over to the caller; null when it was resumed or taken before.
    platform::Task::Suspended take();

private:
    platform::Task::Suspended task_;
};

// The background executor: resumes the task after that time, also while the host's main thread is blocked.
// Tasks that are due at the same time are resumed in the order of the calls. The world owns the task until
// then.
std::weak_ptr<WaitingTask> resumeAfter(Seconds delay, platform::Task::Suspended task);

} // namespace simulated
