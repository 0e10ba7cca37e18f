#pragma once

#include "platform/linux/base/file_descriptor.h"
#include "platform/linux/base/own_processes.h"

#include <sigc++/connection.h>
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// The running interface. Ends with this object, and with the host however that ends. Main thread only.
class InterfaceProcess {
public:
    // `ended` is called once, from the main loop, when the process ends by itself. Null, with the reason in
    // `whyNot`, when it cannot be started. `environment` holds NAME=value. It has a process group of its own
    // and shares the host's standard output and error, and its standard input unless that is a terminal.
    static std::unique_ptr<InterfaceProcess> start(const std::vector<std::string>& command,
                                                   const std::vector<std::string>& environment,
                                                   std::function<void()> ended, std::string& whyNot);

    InterfaceProcess(pid_t process, std::function<void()> ended);
    ~InterfaceProcess();
    InterfaceProcess(const InterfaceProcess&) = delete;
    InterfaceProcess& operator=(const InterfaceProcess&) = delete;

    // Blocks until the process has ended: waits up to `limit` for it to end by itself, then sends SIGTERM to
    // its group, and SIGKILL when that does not help. `ended` is not called any more. True when it ended by
    // itself.
    bool end(std::chrono::milliseconds limit);

    // As a shell reports it: 128 + the signal's number for a process that a signal ended. Absent while it
    // runs.
    std::optional<int> exitStatus() const { return exitStatus_; }

    // How it ended, in words that follow its name in a sentence.
    std::string ending() const;

private:
    bool waitFor(std::chrono::milliseconds time);

    pid_t process_;
    OwnProcess own_;            // its windows are the host's
    FileDescriptor descriptor_; // readable when the process has ended
    sigc::connection watch_;
    std::optional<int> exitStatus_;
    int signal_ = 0;
};

} // namespace platform
