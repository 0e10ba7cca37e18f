#include "platform/linux/x11/pasteboard/held_requests.h"

#include "platform/linux/x11/pasteboard/primary.h"
#include "platform/linux/x11/pasteboard/thread.h"

#include <semaphore>
#include <utility>

namespace platform::selection {
namespace {

using std::chrono::milliseconds;

// For the main thread to decide on a request.
constexpr milliseconds longestThought{300};

// GTK 3 asks for three forms of a text, each when the one before was refused, on a busy machine 100 ms later.
// A person who is told that nothing was pasted takes longer to do it.
constexpr milliseconds refusal{300};

} // namespace

// Shared with the pasteboard's thread.
struct HeldRequests::Arrival {
    std::counting_semaphore<> requests{0};
};

HeldRequests::HeldRequests(std::uint32_t window, milliseconds limit)
    : arrival_(std::make_shared<Arrival>()), end_(Clock::now() + limit) {
    Thread::shared().hold(
        window, [arrival = arrival_] { arrival->requests.release(); }, end_ + longestThought);
}

HeldRequests::~HeldRequests() { Thread::shared().release(); }

bool HeldRequests::areMade() { return arrival_->requests.try_acquire_until(end_); }

bool HeldRequests::deliverIf(std::function<bool()> isRight) {
    const bool delivered = Thread::shared().deliverHeld(std::move(isRight), Clock::now() + refusal);
    if (delivered) primaryIsPastedOver();
    return delivered;
}

} // namespace platform::selection
