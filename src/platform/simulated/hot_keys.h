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

// The hot keys of the system.
struct HotKeys {
    struct Handler {
        const void* owner = nullptr;
        std::function<platform::OSStatus()> run;
    };
    struct Registration {
        const void* owner = nullptr;
        Combination combination;
        platform::EventHotKeyID id;
        std::uint32_t options = 0;
    };

    // Registered by other programs.
    std::set<Combination> taken = {};
    // False: the desktop refuses every handler.
    bool acceptsHandlers = true;

    // Of the host, oldest first.
    std::vector<Handler> handlers = {};
    std::vector<Registration> registrations = {};

    bool isInstalled(const void* handlerOwner) const;
    bool isRegistered(Combination combination) const;
};

} // namespace simulated
