#pragma once

#include "platform/linux/x11/base/event_listener.h"

#include <functional>

namespace platform::x11 {

// What the keyboards and pointers send, whichever program gets it, for as long as the object lives: key
// presses and releases, and presses of buttons other than the wheel's. A key that is held sends one press:
// its repeats are made by the server. Main thread only.
class [[nodiscard]] RawInput {
public:
    enum class Kind { keyDown, keyUp, buttonDown };
    // Synthetic ones are other programs' (on-screen keyboards), but also the host's own when a grab has held
    // them back for a while.
    using Handler = std::function<void(Kind kind, unsigned keyOrButton, bool isSynthetic)>;

    // What happens after this call is told. Nothing is where the server has no XInput 2.2.
    explicit RawInput(Handler handler);
    ~RawInput();
    RawInput(const RawInput&) = delete;
    RawInput& operator=(const RawInput&) = delete;

    // While it lives, the host posts synthetic events, of which nothing is told.
    class [[nodiscard]] Posting {
    public:
        Posting();
        ~Posting();
        Posting(const Posting&) = delete;
        Posting& operator=(const Posting&) = delete;
    };

private:
    void handle(const XEvent& event) const;

    Handler handler_;
    EventListener listener_;
};

} // namespace platform::x11
