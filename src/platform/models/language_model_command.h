#pragma once

#include <string>
#include <vector>

namespace platform {

// `quillmark-host --language-model`, with what follows it on the command line: says which model answers,
// where it runs, whose it is, and why the others do not; with an address, has that server chosen first.
// Returns the program's exit status: 0 when a model answers. Blocks for some seconds at most.
int languageModelCommand(const std::vector<std::string>& arguments);

} // namespace platform
