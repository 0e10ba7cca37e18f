#pragma once

#include <sys/types.h>

#include <string>

namespace platform {

// What the running host says of itself when --check asks it. A plain value.
struct HostReport {
    // `refused`: another program has the combination that the interface wanted.
    enum class HotKeyState { none, refused, paused, held };

    pid_t process = 0;
    HotKeyState hotKey = HotKeyState::none;
    std::string combination; // such as "Alt+Shift+Space"; empty with `none`
    std::string interface;   // its program
};

// On its way between the two processes. What a host of another version leaves out stays as it is above.
std::string encode(const HostReport& report);
HostReport decodeHostReport(const std::string& text);

} // namespace platform
