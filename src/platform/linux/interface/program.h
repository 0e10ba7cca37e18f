#pragma once

#include <string>
#include <vector>

namespace platform {

// The interface the host serves: its program's path, and arguments. Set once, when the host starts.
const std::vector<std::string>& interfaceCommand();
void setInterfaceCommand(std::vector<std::string> command);

// Completes the program of a command line: empty becomes quillmark-interface, from beside the host's own
// binary, else from the PATH, and a bare name is looked up in the PATH. Returns an empty command, with a
// sentence that says what to do in `problem`, when it cannot be started.
std::vector<std::string> findInterface(std::vector<std::string> command, std::string& problem);

} // namespace platform
