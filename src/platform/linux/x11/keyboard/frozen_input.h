#pragma once

#include <chrono>
#include <cstdint>

namespace platform::x11 {

// Makes programs wait for what people do with keyboards and pointers. Main thread only.
class FrozenInput {
public:
    // Whatever has to be asked is asked here.
    FrozenInput();

    // For this long no program gets any of it; then it gets all of it, in order. The X server ends that by
    // itself, whatever becomes of the host, and answers nothing on this connection meanwhile. Freezes nothing
    // while a program has grabbed the pointer, for an open menu for instance, or where the server lacks the
    // SYNC extension.
    void begin(std::chrono::milliseconds time) const;

private:
    std::uint32_t clock_;
};

} // namespace platform::x11
