#include "testing/desktop/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace testbed {

namespace {

[[noreturn]] void becomeProgram(const std::vector<std::string>& command, int input, const std::string& output,
                                const std::map<std::string, std::string>& environment) {
    dup2(input, STDIN_FILENO);
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const auto& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

Process::Process(const std::vector<std::string>& command,
                 const std::map<std::string, std::string>& environment) {
    const std::string output = folder_ / "output";
    std::array<int, 2> input{};
    if (pipe2(input.data(), O_CLOEXEC) != 0) throw std::runtime_error("No pipe can be made.");
    input_ = input[1];
    pid_ = fork();
    if (pid_ < 0) throw std::runtime_error("No process can be started.");
    if (pid_ == 0) becomeProgram(command, input[0], output, environment);
    close(input[0]);
}

Process::~Process() {
    closeInput();
    if (exitStatus(milliseconds(0))) return;
    kill(pid_, SIGTERM);
    if (exitStatus(milliseconds(3000))) return;
    kill(pid_, SIGKILL);
    exitStatus();
}

std::string Process::output() const { return readFile(folder_ / "output"); }

void Process::write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t count = ::write(input_, text.data(), text.size());
        if (count < 0) throw std::runtime_error("The program takes no input.");
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void Process::closeInput() {
    if (input_ >= 0) close(input_);
    input_ = -1;
}

void Process::signal(int number) const {
    if (!status_) kill(pid_, number);
}

std::optional<int> Process::exitStatus(milliseconds limit) {
    waitUntil(
        [this] {
            int status = 0;
            if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_)
                status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            return status_.has_value();
        },
        limit);
    return status_;
}

} // namespace testbed
