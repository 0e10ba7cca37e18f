// Captures, pastes and copies.
#pragma once

#include "testing/soak/step.h"

#include <vector>

namespace soak {

std::vector<Step> captureSteps();

} // namespace soak
