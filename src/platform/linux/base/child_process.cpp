#include "platform/linux/base/child_process.h"

#include <sys/resource.h>

#include <csignal>
#include <optional>

namespace platform {
namespace {

std::optional<rlimit> openFileLimitAtStart;

} // namespace

void raiseOpenFileLimit() {
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) != 0) return;
    openFileLimitAtStart = files;
    files.rlim_cur = files.rlim_max;
    setrlimit(RLIMIT_NOFILE, &files);
}

void undoHostSettings() {
    if (openFileLimitAtStart) setrlimit(RLIMIT_NOFILE, &*openFileLimitAtStart);
    signal(SIGPIPE, SIG_DFL);
}

} // namespace platform
