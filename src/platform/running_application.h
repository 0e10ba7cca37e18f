#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

namespace platform {

// A program with windows, as it was found: the handle stays good after the program has ended, and a later
// program with the same process identifier is another one. Copies refer to the same program. Main thread
// only.
class RunningApplication {
public:
    // What a desktop knows of one program; each desktop completes it.
    class Process;

    explicit RunningApplication(std::shared_ptr<const Process> process);

    // The host itself.
    static RunningApplication currentApplication();

    pid_t processIdentifier() const;

    // The program's stable identity, the same at every start of it; absent when it has none.
    std::optional<std::string> bundleIdentifier() const;

    // The name the user knows it by; absent when it has none.
    std::optional<std::string> localizedName() const;

    bool isTerminated() const;

    // Asks the desktop to bring this program to the front; `application` gives way. True when it was asked.
    bool activateFromApplication(const RunningApplication& application) const;

    bool operator==(const RunningApplication& other) const;

private:
    std::shared_ptr<const Process> process_;
};

} // namespace platform
