// What ends and starts again while everything else goes on.
#pragma once

#include "testing/soak/step.h"

#include <vector>

namespace soak {

std::vector<Step> restartSteps();

// Ends the host in one of the ways in which it can end, and starts it anew.
void restartTheHost(World& world, Chance& chance);

} // namespace soak
