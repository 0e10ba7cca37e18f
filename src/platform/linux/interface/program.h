#pragma once

#include <string>
#include <vector>

namespace platform {

// The command line of the interface that the host serves: the path of its program, then its arguments. Set
// once, when the host starts. Main thread only.
const std::vector<std::string>& interfaceCommand();
void setInterfaceCommand(std::vector<std::string> command);

// Completes the command line that the user gave. An empty one becomes quillmark-interface, from the folder of
// the host's own binary, else from the PATH; a program's name without a folder is looked up in the PATH.
// Returns an empty command, and in `problem` a sentence that says what to do, when it cannot be started.
std::vector<std::string> findInterface(std::vector<std::string> command, std::string& problem);

} // namespace platform
