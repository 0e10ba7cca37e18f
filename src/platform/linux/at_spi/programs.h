#pragma once

#include "platform/linux/at_spi/object.h"

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

// The programs on the accessibility bus, and what is remembered of each while it runs. Main thread only.
namespace platform::at_spi {

// One program's connection to the bus. A fact in it stays true for as long as the connection lives, except
// the two objects, which are only where to look first.
struct Program {
    std::string name;
    pid_t process = 0;
    bool behindProxy = false; // it was a sandbox's proxy that the bus knew as its process
    std::optional<Toolkit> toolkit;
    std::optional<Object> activeWindow;   // the one last found active
    std::optional<Object> focusedElement; // the one last found in it
    bool askedToShow = false;             // told to show its elements; has yielded none since
    bool showsNothing = false;            // told so in vain, a whole schedule long
    bool gone = false;                    // it was asked and has left the bus
};

class Programs {
public:
    // The connections of a process to the bus: usually one, none when it is not there; absent when that
    // could not be found out. The pointers stay good until the next call of `of` or `all`.
    //
    // No signal says when a program has ended: a bus never gives a name to a second program, so that a
    // remembered one can only fail with `Failure::gone`, and `forget` is told.
    std::optional<std::vector<Program*>> of(Bus& bus, pid_t process);

    // Every program but the host itself.
    std::vector<Program*> all(Bus& bus);

    // The known ones that reach the bus through a sandbox's proxy.
    std::vector<Program*> sandboxed();

private:
    bool refresh(Bus& bus);
    std::vector<Program*> known(pid_t process);

    std::map<std::string, Program> programs_;
};

} // namespace platform::at_spi
