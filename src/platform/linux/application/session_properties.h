#pragma once

#include <X11/SM/SMlib.h>

#include <string>
#include <vector>

// What the manager of a session is told about this program. Main thread only.
namespace platform {

// When the manager starts the program again: after a crash too, or only at the next login if it runs then.
enum class RestartStyle { whenItEnds = SmRestartImmediately, ifItWasRunning = SmRestartIfRunning };

// Who the program is, the command that starts another one like it, and the one that brings this one back.
void describeProgram(SmcConn connection, const std::vector<std::string>& clone,
                     const std::vector<std::string>& restart);

void setRestartStyle(SmcConn connection, RestartStyle style);

} // namespace platform
