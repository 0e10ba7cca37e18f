#pragma once

#include "platform/linux/at_spi/object.h"

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

// The programs on the accessibility bus, and what is remembered of each while it is there. Main thread only.
namespace platform::at_spi {

// A program as the bus knows it: one connection. What stands here is true while the connection lives, except
// the two objects, which are only where to look first.
struct Application {
    std::string name;
    pid_t process = 0;
    bool behindProxy = false; // the bus took a sandbox's proxy for its process
    std::optional<Toolkit> toolkit;
    std::optional<Object> activeWindow; // the one last found active
    std::chrono::steady_clock::time_point activeAt{};
    std::optional<Object> focusedElement; // the one last found in it
    std::optional<Object> latestBefore;   // what it had told by then to have gained the focus
    struct Search {
        Object top;
        std::shared_ptr<PendingReply> pending;
    };
    std::optional<Search> search;                                       // for the focus, not finished yet
    std::optional<std::chrono::steady_clock::time_point> askedToShowAt; // and it has shown no element since
    bool gone = false; // a call failed because it has left the bus
};

class Applications {
public:
    // The connections of a process to the bus: usually one, none when it is not there; absent when that
    // could not be found out. The pointers stay good until the next call of `of` or `all`.
    //
    // A bus never gives a name to a second program. So a remembered one need not be checked: once the program
    // has ended, calls to it fail with `Failure::gone`; whoever sees that sets `gone`, and the next call of
    // `of` drops it.
    std::optional<std::vector<Application*>> of(Bus& bus, pid_t process);

    // Every program but the host itself.
    std::vector<Application*> all(Bus& bus);

    // Of the known ones, those that reach the bus through a sandbox's proxy.
    std::vector<Application*> sandboxed();

private:
    bool refresh(Bus& bus);
    void dropClients(Bus& bus, pid_t process);
    std::vector<Application*> known(pid_t process);

    std::map<std::string, Application> applications_;
};

} // namespace platform::at_spi
