// Generations of the language model, some of them cancelled.
#pragma once

#include "testing/soak/step.h"

#include <vector>

namespace soak {

std::vector<Step> generationSteps();

} // namespace soak
