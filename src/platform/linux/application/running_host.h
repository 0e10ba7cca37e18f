#pragma once

#include "platform/linux/application/command_line.h"
#include "platform/linux/application/report.h"

#include <optional>

// The host that runs already, as a later start of the program meets it.
namespace platform {

// Puts the command line's request to it, says what it answers, and returns the exit status.
int askRunningHost(const CommandLine& line, const Report& report);

// Brings its window to the front, or with `background` leaves it as it is, and returns the exit status.
// Absent when none runs: this process is to be the host. Where the running one hangs and the person wants it
// ended, the program begins anew with `arguments`, those of its main function.
std::optional<int> leaveToRunningHost(const CommandLine& line, const Report& report, char** arguments);

} // namespace platform
