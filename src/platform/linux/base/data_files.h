#pragma once

#include <filesystem>
#include <string>

namespace platform {

// A file or folder that comes with the program, below "share/" of the prefix that the program is installed
// in, or of the folder that it is built in; every link followed. Empty when there is none.
std::filesystem::path dataFile(const std::string& name);

} // namespace platform
