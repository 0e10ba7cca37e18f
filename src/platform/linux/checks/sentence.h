#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// With an upper case letter at the start.
std::string asSentence(std::string line);

// From a line such as the host prints when it does not start: what is wrong; what to do.
Finding notThere(const std::string& name, const std::string& found, const std::string& problem);

} // namespace platform
