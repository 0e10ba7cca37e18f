#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

namespace platform {

// A handle to a program with windows. It stays valid after the program has ended; a later program with the
// same process identifier is another one. Copies refer to the same program. Main thread only.
class RunningApplication {
public:
    // What a desktop knows of one program; each desktop completes it.
    class Process;

    explicit RunningApplication(std::shared_ptr<const Process> process);

    // The host itself.
    static RunningApplication currentApplication();

    pid_t processIdentifier() const;

    // The program's identity, the same at every start; absent when it has none.
    std::optional<std::string> bundleIdentifier() const;

    // The program's name for the user; absent when it has none.
    std::optional<std::string> localizedName() const;

    bool isTerminated() const;

    // Asks the desktop to bring this program to the front in place of `application`. True when the request
    // was made; the program may come later or not at all.
    bool activateFromApplication(const RunningApplication& application) const;

    bool operator==(const RunningApplication& other) const;

private:
    std::shared_ptr<const Process> process_;
};

} // namespace platform
