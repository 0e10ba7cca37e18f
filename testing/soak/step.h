#pragma once

#include "testing/soak/chance.h"
#include "testing/soak/world.h"

#include <string_view>

namespace soak {

// One thing that somebody does. It says in the world what must be true afterwards, and what was wrong at
// once.
struct Step {
    std::string_view name;
    int weight; // how often, compared with the others
    void (*run)(World&, Chance&);
};

} // namespace soak
