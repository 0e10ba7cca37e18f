#pragma once

#include <filesystem>

namespace platform {

// Where the user's own settings for this program are kept, whether it exists yet or not. Any thread.
std::filesystem::path settingsFolder();

} // namespace platform
