#include "platform/linux/base/pidfd.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace platform {

// Not through <sys/pidfd.h>: glibc 2.36 declares the function for C only.
FileDescriptor openProcess(pid_t process) {
    return FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
}

} // namespace platform
