#include "platform/linux/interface/process.h"

#include "platform/linux/base/child_process.h"
#include "platform/linux/base/pidfd.h"

#include <glibmm/main.h>
#include <glibmm/spawn.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <utility>

namespace platform {
namespace {

constexpr int firstSignalStatus = 128;

// Runs in the child, between fork and exec.
void prepareChild(pid_t host) {
    // With a process group of its own, Control+C in the host's terminal ends the host alone, which then asks
    // the interface.
    setpgid(0, 0);
    undoHostSettings();
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != host) _exit(firstSignalStatus + SIGTERM); // the host was gone before the line above
}

// The whole group, because the interface may be a shell that waits for the program it started; and the
// process itself, should it have left its group.
void signalGroup(pid_t process, int number) {
    kill(-process, number);
    kill(process, number);
}

} // namespace

std::unique_ptr<InterfaceProcess> InterfaceProcess::start(const std::vector<std::string>& command,
                                                          const std::vector<std::string>& environment,
                                                          std::function<void()> ended, std::string& whyNot) {
    try {
        Glib::Pid process{};
        // The terminal stops a process of another group than the foreground one when it reads (SIGTTIN).
        const auto input = isatty(STDIN_FILENO) != 0 ? Glib::SpawnFlags{} : Glib::SPAWN_CHILD_INHERITS_STDIN;
        Glib::spawn_async(
            "", command, environment, Glib::SPAWN_DO_NOT_REAP_CHILD | input,
            [host = getpid()] { prepareChild(host); }, &process);
        return std::make_unique<InterfaceProcess>(process, std::move(ended));
    } catch (const Glib::Error& error) {
        whyNot = error.what();
        return nullptr;
    }
}

InterfaceProcess::InterfaceProcess(pid_t process, std::function<void()> ended)
    : process_(process), own_(process), descriptor_(openProcess(process)) {
    watch_ = Glib::signal_io().connect(
        [this, ended = std::move(ended)](Glib::IOCondition) {
            if (!waitFor({})) return true;
            ended();
            return false;
        },
        descriptor_.number(), Glib::IO_IN);
}

InterfaceProcess::~InterfaceProcess() { end({}); }

bool InterfaceProcess::end(std::chrono::milliseconds limit) {
    constexpr std::chrono::milliseconds limitAfterAsking{2000};
    constexpr std::chrono::milliseconds forever{-1};
    watch_.disconnect();
    if (exitStatus_ || waitFor(limit)) return true;
    signalGroup(process_, SIGTERM);
    signalGroup(process_, SIGCONT); // a stopped process handles SIGTERM only once it goes on
    if (waitFor(limitAfterAsking)) return false;
    signalGroup(process_, SIGKILL);
    waitFor(forever);
    return false;
}

bool InterfaceProcess::waitFor(std::chrono::milliseconds time) {
    pollfd ended{descriptor_.number(), POLLIN, 0};
    while (poll(&ended, 1, static_cast<int>(time.count())) < 0 && errno == EINTR) {
    }
    int status = 0;
    if (waitpid(process_, &status, WNOHANG) != process_) return false;
    signal_ = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    exitStatus_ = signal_ != 0 ? firstSignalStatus + signal_ : WEXITSTATUS(status);
    return true;
}

std::string InterfaceProcess::ending() const {
    if (signal_ == 0) return "ended with status " + std::to_string(exitStatus_.value_or(0));
    return "was ended by signal " + std::to_string(signal_) + " (" + strsignal(signal_) + ")";
}

} // namespace platform
