// What a capture costs at the very least: the questions it must put to other programs, asked one after
// another with nothing in between.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>

namespace bench {

// The questions of one capture of a selection in the program with that process identifier, which has a
// focused text field with a selection: 14 over the accessibility bus, 4 to the X server.
class BareRoundTrips {
public:
    // Throws when the program shows no such field.
    explicit BareRoundTrips(pid_t program);
    ~BareRoundTrips();
    BareRoundTrips(const BareRoundTrips&) = delete;
    BareRoundTrips& operator=(const BareRoundTrips&) = delete;

    // Asks them all once; how long that took.
    std::chrono::nanoseconds accessibility() const;
    // All questions about the field sent together, which no capture can do: what it asks next depends on
    // answers.
    std::chrono::nanoseconds accessibilityAtOnce() const;
    std::chrono::nanoseconds display() const;

private:
    struct Target;
    std::unique_ptr<Target> target_;
};

} // namespace bench
