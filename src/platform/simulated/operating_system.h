#pragma once

#include "platform/process_info.h"

#include <string>

namespace simulated {

// The system that the host runs on.
struct OperatingSystem {
    platform::OperatingSystemVersion version{26, 0, 0};
    std::string versionString = "Version 26.0 (Build 25A354)";
};

} // namespace simulated
