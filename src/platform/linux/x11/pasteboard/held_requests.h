#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

namespace platform::selection {

// While it lives, and until its limit at most, the requests of one program for the host's pasteboard are held
// back until answer() decides on them. A request for the names of the types is answered at once. Main thread
// only.
class [[nodiscard]] HeldRequests {
public:
    // Of the program that made `window`.
    HeldRequests(std::uint32_t window, std::chrono::milliseconds limit);
    // Delivers what is still held back, as reaching the limit does.
    ~HeldRequests();
    HeldRequests(const HeldRequests&) = delete;
    HeldRequests& operator=(const HeldRequests&) = delete;

    // Waits for one more request; false when none comes within this time, or by the limit.
    bool next(std::chrono::milliseconds time);

    // Delivers or refuses the oldest request that is held back.
    void answer(bool deliver);

private:
    struct Count;
    std::shared_ptr<Count> count_;
    std::chrono::steady_clock::time_point end_;
};

} // namespace platform::selection
