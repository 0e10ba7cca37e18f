#pragma once

#include <functional>
#include <string>
#include <vector>

namespace platform {

// What one start of the program wants of the host that runs already.
enum class InstanceRequest { show, greet, hide, capture, pause, quit, report };

// Who asks: the start of the program that makes the request.
struct InstanceCaller {
    std::string startupId;            // the desktop waits for a window with it; empty: it waits for none
    std::vector<std::string> command; // the interface that it was to serve; empty: the usual one
};

struct InstanceAnswer {
    // `differs`: done, but not with the interface that the caller named.
    enum class Outcome { done, differs, refused };

    Outcome outcome = Outcome::done;
    std::string line; // for the person who asked; empty when there is nothing to say
};

// Answers the request once, at once or later; nothing happens when the caller has gone.
using InstanceReply = std::function<void(const InstanceAnswer&)>;

} // namespace platform
