#include "platform/linux/base/outgoing_messages.h"

#include "platform/main_queue.h"
#include "platform/never_destroyed.h"
#include "platform/outgoing_messages.h"

#include <utility>
#include <vector>

namespace platform {
namespace {

// Main thread only.
struct Waiting {
    bool messages = false;
    std::vector<std::function<void()>> work;
};

Waiting& waiting() {
    static const NeverDestroyed<Waiting> value;
    return *value;
}

} // namespace

void OutgoingMessages::whenTaken(std::function<void()> work) {
    MainQueue::async([work = std::move(work)]() mutable {
        if (!waiting().messages) return work();
        waiting().work.push_back(std::move(work));
    });
}

// In an entry of its own: the socket is in the middle of something.
void setMessagesWaiting(bool messages) {
    waiting().messages = messages;
    if (messages || waiting().work.empty()) return;
    MainQueue::async([ready = std::exchange(waiting().work, {})] {
        for (const auto& work : ready)
            work();
    });
}

} // namespace platform
