#pragma once

#include <string>

namespace platform {

// A variable of the environment; empty when it is not set.
std::string environmentVariable(const char* name);

} // namespace platform
