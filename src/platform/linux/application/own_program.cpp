#include "platform/linux/application/own_program.h"

#include "platform/linux/base/child_process.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace platform {

const std::string& ownProgram() {
    static const std::string path = [] {
        std::error_code unknown;
        return std::filesystem::read_symlink("/proc/self/exe", unknown).string();
    }();
    return path;
}

void startAfresh(char** arguments) {
    undoHostSettings();
    execv(ownProgram().c_str(), arguments);
}

} // namespace platform
