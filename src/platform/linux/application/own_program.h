#pragma once

#include <string>

// The program as a file that can be started again.
namespace platform {

// Its path, as it was at the first call: an upgrade of the running program puts another file there.
const std::string& ownProgram();

// Replaces this process by the program begun anew, with nothing left of this run. `arguments` are those of
// its main function. Returns only when that fails.
void startAfresh(char** arguments);

} // namespace platform
