#pragma once

#include <X11/SM/SMlib.h>

#include <string>
#include <vector>

// What the manager of a session is told about this program. Main thread only.
namespace platform {

// When the manager starts the program again: after a crash too, or only at the next login if it runs then.
enum class RestartStyle { whenItEnds = SmRestartImmediately, ifItWasRunning = SmRestartIfRunning };

// Who the program is, and `restart`, the command that starts it again.
void describeProgram(SmcConn connection, const std::vector<std::string>& restart);

void setRestartStyle(SmcConn connection, RestartStyle style);

} // namespace platform
