#pragma once

#include "platform/hot_key.h"

#include <cstdint>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace simulated {

// A key code and a modifier mask.
using Combination = std::pair<std::uint32_t, std::uint32_t>;

// The system's hot keys.
struct HotKeys {
    struct Handler {
        const void* owner = nullptr;
        platform::EventTypeSpec type;
        std::function<platform::OSStatus()> run;
    };
    struct Registration {
        const void* owner = nullptr;
        Combination combination;
        platform::EventHotKeyID id;
        std::uint32_t options = 0;
    };

    // Held by other programs.
    std::set<Combination> taken = {};
    // False: the desktop refuses every handler.
    bool takesHandlers = true;

    // The host's own.
    std::vector<Handler> handlers = {};
    std::vector<Registration> registrations = {};

    bool registered(Combination combination) const;
};

} // namespace simulated
