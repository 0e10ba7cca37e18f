// What a process occupies.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>

namespace soak {

struct Footprint {
    long kilobytes = 0;                     // in memory (VmRSS)
    std::optional<std::size_t> descriptors; // absent when only root may look (the host keeps others out)
};

Footprint footprint(pid_t process);

std::string inWords(const Footprint& footprint);

// What has grown from `before` to `after` that should not have; empty when nothing has.
std::string growth(const Footprint& before, const Footprint& after);

} // namespace soak
