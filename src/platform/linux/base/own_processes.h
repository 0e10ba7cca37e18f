#pragma once

#include <sys/types.h>

namespace platform {

// Which processes are the host itself, so that it takes none of their windows for another program's. Main
// thread only.

// True for the host's own process and for every process that an OwnProcess stands for.
bool isOwnProcess(pid_t process);

// While it lives, `process` counts as the host's own.
class [[nodiscard]] OwnProcess {
public:
    explicit OwnProcess(pid_t process);
    ~OwnProcess();
    OwnProcess(const OwnProcess&) = delete;
    OwnProcess& operator=(const OwnProcess&) = delete;

private:
    pid_t process_;
};

} // namespace platform
