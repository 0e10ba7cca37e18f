#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace platform::selection {

// While it lives, the requests of one program for what is on the host's pasteboard are held back. A request
// for the names of the types is answered at once. Main thread only.
class [[nodiscard]] HeldRequests {
public:
    // Of the program that made `window`.
    HeldRequests(std::uint32_t window, std::chrono::milliseconds limit);
    // Delivers what is held back, unless it was refused; the X server has either answer then. The
    // pasteboard's thread does so by itself should the main thread take much longer than the limit.
    ~HeldRequests();
    HeldRequests(const HeldRequests&) = delete;
    HeldRequests& operator=(const HeldRequests&) = delete;

    // Waits for the first request; false when none comes by the limit.
    bool areMade();

    // Delivers what is held back if `isRight` says so at the last moment, on the pasteboard's thread and
    // perhaps when this object has gone. Else refuses it, and what the program asks for next: it may ask for
    // one form after the other. False when it was refused.
    bool deliverIf(std::function<bool()> isRight);

private:
    struct Arrival;
    std::shared_ptr<Arrival> arrival_;
    std::chrono::steady_clock::time_point end_;
};

} // namespace platform::selection
