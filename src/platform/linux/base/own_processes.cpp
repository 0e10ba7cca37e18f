#include "platform/linux/base/own_processes.h"

#include <unistd.h>

#include <algorithm>
#include <vector>

namespace platform {
namespace {

std::vector<pid_t> others; // besides the host's own process

} // namespace

bool isOwnProcess(pid_t process) {
    return process == getpid() || std::ranges::find(others, process) != others.end();
}

OwnProcess::OwnProcess(pid_t process) : process_(process) { others.push_back(process); }

OwnProcess::~OwnProcess() { others.erase(std::ranges::find(others, process_)); }

} // namespace platform
