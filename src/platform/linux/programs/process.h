#pragma once

#include "platform/linux/base/file_descriptor.h"
#include "platform/linux/x11/windows/window_class.h"
#include "platform/running_application.h"

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

// A program that was found by one of its windows. What the window says is read in the constructor, since the
// window may be gone later.
class RunningApplication::Process {
public:
    // `window` is 0 when the program was not found by a window.
    Process(pid_t id, x11::WindowId window);

    pid_t id() const { return id_; }
    x11::WindowId window() const { return window_; }
    bool isTerminated() const;

    // The same process, and not another one with the same number.
    bool isSameAs(const Process& other) const { return id_ == other.id_ && startTime_ == other.startTime_; }

    // The program's application identifier, else its desktop file's name, else its window class.
    std::optional<std::string> identity() const;

    // The name of the desktop file's entry, else the window class, else the process's own name.
    std::optional<std::string> name() const;

private:
    std::optional<std::string> desktopFile() const;

    pid_t id_;
    x11::WindowId window_;
    std::optional<std::uint64_t>
        startTime_;             // in clock ticks since the machine's start; absent once it has ended
    FileDescriptor descriptor_; // readable once it has ended
    std::optional<std::string> applicationId_;
    std::optional<x11::WindowClass> class_;
};

} // namespace platform
