#pragma once

namespace platform::x11 {

// While it lives, the X server serves the host's own connection alone: what the host is told stays true until
// it has acted on it. Other programs wait, the host's other connections too, so nothing else may be waited
// for meanwhile. Does nothing without an X server. Main thread only.
class [[nodiscard]] ServerGrab {
public:
    ServerGrab();
    ~ServerGrab();
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
};

} // namespace platform::x11
