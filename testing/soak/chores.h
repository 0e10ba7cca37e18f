// The host's window, its menu, and everything else that it is asked for.
#pragma once

#include "testing/soak/step.h"

#include <vector>

namespace soak {

std::vector<Step> choreSteps();

} // namespace soak
