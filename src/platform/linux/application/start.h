#pragma once

#include "platform/application.h"
#include "platform/linux/application/command_line.h"
#include "platform/linux/application/report.h"

#include <functional>

namespace platform {

// Starts the program as the command line wants it: becomes the host of this user and display and runs until
// its end, or has the host that runs already come to the front. Returns the exit status. `arguments` are
// those of the program's main function: where the person wants to start again, the process begins anew with
// them.
int startHost(const CommandLine& line, const Report& report, char** arguments,
              const std::function<MainInterface()>& load);

} // namespace platform
