#include "platform/linux/interface/program.h"

#include "platform/linux/base/handle.h"

#include <glib.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr const char* suppliedProgram = "quillmark-interface";

std::vector<std::string> chosenCommand;

bool isProgram(const fs::path& path) {
    std::error_code unreadable;
    return fs::is_regular_file(path, unreadable) && access(path.c_str(), X_OK) == 0;
}

std::string besideTheHost() {
    std::error_code unreadable;
    const auto self = fs::read_symlink("/proc/self/exe", unreadable);
    const auto path = self.parent_path() / suppliedProgram;
    return isProgram(path) ? path.string() : "";
}

std::string inPath(const std::string& name) {
    const Handle<char, g_free> path(g_find_program_in_path(name.c_str()));
    return path ? path.get() : "";
}

std::string problemWith(const std::string& program) {
    std::error_code unreadable;
    if (!fs::exists(program, unreadable)) {
        return "there is no program \"" + program +
               "\"; give the path of your interface, or none to start quillmark-interface.";
    }
    if (fs::is_directory(program, unreadable)) {
        return "\"" + program + "\" is a folder; give the path of your interface's program.";
    }
    return "\"" + program +
           "\" may not be executed; run chmod +x on it, or give the program that runs it first.";
}

} // namespace

const std::vector<std::string>& interfaceCommand() { return chosenCommand; }

void setInterfaceCommand(std::vector<std::string> command) { chosenCommand = std::move(command); }

std::vector<std::string> findInterface(std::vector<std::string> command, std::string& problem) {
    if (command.empty()) {
        command = {besideTheHost()};
        if (command[0].empty()) command[0] = inPath(suppliedProgram);
        if (!command[0].empty()) return command;
        problem = "quillmark-interface is neither beside this program nor in the PATH; install it, or name "
                  "your own interface: quillmark-host PROGRAM ARGS.";
        return {};
    }
    if (command[0].find('/') == std::string::npos) {
        if (auto path = inPath(command[0]); !path.empty()) command[0] = std::move(path);
    }
    if (command[0].find('/') != std::string::npos && isProgram(command[0])) return command;
    problem = problemWith(command[0]);
    return {};
}

} // namespace platform
