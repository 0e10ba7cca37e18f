#pragma once

#include <compare>
#include <string>

namespace platform {

struct OperatingSystemVersion {
    int majorVersion = 0;
    int minorVersion = 0;
    int patchVersion = 0;

    auto operator<=>(const OperatingSystemVersion&) const = default;
};

// The system that the host runs on, read again at every call. Any thread.
class ProcessInfo {
public:
    static const ProcessInfo& processInfo();

    bool isOperatingSystemAtLeast(OperatingSystemVersion version) const;

    // The system's name and version, as the system itself writes them for people.
    std::string operatingSystemVersionString() const;

private:
    ProcessInfo() = default;
};

} // namespace platform
