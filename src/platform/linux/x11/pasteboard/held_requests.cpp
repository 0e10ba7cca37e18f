#include "platform/linux/x11/pasteboard/held_requests.h"

#include "platform/linux/x11/pasteboard/thread.h"

#include <algorithm>
#include <semaphore>

namespace platform::selection {

// Of requests that next() has not told of yet; shared with the pasteboard's thread.
struct HeldRequests::Count {
    std::counting_semaphore<> requests{0};
};

HeldRequests::HeldRequests(std::uint32_t window, std::chrono::milliseconds limit)
    : count_(std::make_shared<Count>()), end_(Clock::now() + limit) {
    Thread::shared().hold(
        window, [count = count_] { count->requests.release(); }, end_);
}

HeldRequests::~HeldRequests() { Thread::shared().release(); }

bool HeldRequests::next(std::chrono::milliseconds time) {
    return count_->requests.try_acquire_until(std::min(end_, Clock::now() + time));
}

void HeldRequests::answer(bool deliver) { Thread::shared().answerHeld(deliver); }

} // namespace platform::selection
