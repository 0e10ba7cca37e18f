#pragma once

#include "platform/linux/checks/finding.h"

namespace platform {

// Looks at everything that the host needs on this desktop, in the order in which a person would mend it.
// `interface` is the command line of the interface, empty for the usual one. Takes seconds where something
// does not answer; changes nothing. Main thread only.
std::vector<Finding> checkDesktop(const std::vector<std::string>& interface);

} // namespace platform
