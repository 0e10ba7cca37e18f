#pragma once

#include "platform/linux/at_spi/applications.h"

#include <memory>
#include <string>

// The connection to this desktop session's accessibility bus, and the bus's switches. Main thread only.
namespace platform::at_spi {

class Session {
public:
    // The one session; connected at first use, and again when a connection was lost.
    static Session& shared();

    // The bus that programs show their objects on; null when there is none, and `whyNot` says so.
    Bus* accessibilityBus();
    // What is known of the programs on that bus.
    Applications& applications() { return applications_; }
    // A sentence for the person; empty when there is an accessibility bus.
    const std::string& whyNot() const { return whyNot_; }

    // Whether programs show their objects on the bus.
    bool isEnabled();
    // Has programs show their objects. True when they do. It lasts: the bus's launcher keeps it among the
    // desktop's own settings.
    bool enable();

    // Has programs tell of focus changes for as long as the host lives, because Chromium gives a window the
    // state ACTIVE only while somebody asks for that. The events are not delivered to this connection.
    void keepListening();

private:
    Session();
    bool connect();
    void registerEvents();

    std::unique_ptr<Bus> session_;
    std::unique_ptr<Bus> accessibility_;
    Applications applications_;
    std::string whyNot_;
    Milliseconds deadline_; // of each step on the way
    std::chrono::steady_clock::time_point nextAttempt_{};
    bool listening_ = false;
};

} // namespace platform::at_spi
