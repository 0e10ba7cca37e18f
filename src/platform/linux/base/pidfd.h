#pragma once

#include "platform/linux/base/file_descriptor.h"

#include <sys/types.h>

namespace platform {

// A descriptor of a process that becomes readable when the process has ended (pidfd_open(2)). Empty when
// there is no such process.
FileDescriptor openProcess(pid_t process);

} // namespace platform
