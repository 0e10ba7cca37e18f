#pragma once

#include "platform/simulated/clock.h"
#include "platform/task.h"

#include <memory>

namespace simulated {

// A task that is put aside. Whoever holds it owns the task: let go without being resumed, it ends where it
// stands.
class PutAside {
public:
    explicit PutAside(platform::Task::Suspended task) : task_(task) {}
    ~PutAside();
    PutAside(const PutAside&) = delete;
    PutAside& operator=(const PutAside&) = delete;

    // The task goes on until it waits again or ends; nothing happens the second time.
    void resume();
    // Somebody else owns it now; null when it has gone on already.
    platform::Task::Suspended take();

private:
    platform::Task::Suspended task_;
};

// The background executor: the task goes on after that time, also while the host's main thread is blocked.
// Tasks that are due at one moment go on in the order in which they were put aside. The world owns the task
// until then.
std::weak_ptr<PutAside> resumeAfter(Seconds delay, platform::Task::Suspended task);

} // namespace simulated
