#pragma once

#include "platform/linux/at_spi/programs.h"

#include <memory>
#include <string>

// The way to the accessibility bus of this desktop session, and its switches. Main thread only.
namespace platform::at_spi {

class Session {
public:
    // The one session; connected at first use, and again when a connection was lost.
    static Session& shared();

    // The bus that programs show their objects on; null when there is none, and `whyNot` says so.
    Bus* accessibilityBus();
    // What is known of the programs on that bus.
    Programs& programs() { return programs_; }
    // A sentence for the person; empty when there is an accessibility bus.
    const std::string& whyNot() const { return whyNot_; }

    // Whether programs show their objects on the bus.
    bool isEnabled();
    // Has programs show their objects. True when they do. It lasts: the bus's launcher keeps it among the
    // desktop's own settings.
    bool enable();

    // Has programs tell of focus changes for as long as the host lives, because Chromium marks a window
    // active only while somebody asked for that. Nothing of it is delivered to this connection.
    void keepListening();

private:
    Session();
    bool connect();
    void registerEvents();

    std::unique_ptr<Bus> session_;
    std::unique_ptr<Bus> accessibility_;
    Programs programs_;
    std::string whyNot_;
    Milliseconds deadline_; // of each step on the way
    std::chrono::steady_clock::time_point nextAttempt_{};
    bool listening_ = false;
};

} // namespace platform::at_spi
