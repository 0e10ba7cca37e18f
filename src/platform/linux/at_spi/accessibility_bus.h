#pragma once

#include "platform/linux/at_spi/applications.h"
#include "platform/linux/at_spi/focus_history.h"

#include <atomic>
#include <memory>
#include <string>

// The connection to this desktop session's accessibility bus, and the bus's switch. Main thread only.
namespace platform::at_spi {

class AccessibilityBus {
public:
    // The only one; connected at first use, and again when the connection was lost.
    static AccessibilityBus& shared();

    // The bus that programs show their objects on; null when there is none, and `whyNot` says so.
    Bus* bus();
    // What is known of the programs on that bus.
    Applications& applications() { return applications_; }
    // Null while nobody listens, and without a bus.
    const FocusHistory* focusHistory() const { return focusHistory_.get(); }
    // A sentence for the person; empty when there is an accessibility bus.
    const std::string& whyNot() const { return whyNot_; }

    // Whether programs show their objects on the bus. Asks only when it may have changed since last time.
    bool isEnabled();
    // Has programs show their objects. True when they do. It lasts: the bus's launcher keeps it among the
    // desktop's own settings.
    bool enable();

    // Has programs tell of focus changes for as long as the host lives, and remembers them. Chromium gives a
    // window the state ACTIVE only while somebody asks for that. Has a program whose window comes to the
    // front build its objects. While there is no bus, looks for one every few seconds, and then has programs
    // show their objects there.
    void keepListening();

private:
    AccessibilityBus();
    bool isConnected() const;
    void attemptToConnect();
    bool connect();
    void disconnect();
    void tryAgainLater();
    std::optional<bool> readSwitch();
    void watchServices();
    void followLauncher();
    void registerEvents();
    void wakeActiveWindows();

    std::unique_ptr<Bus> session_;
    std::unique_ptr<Bus> accessibility_;
    std::string address_; // of the accessibility bus
    Applications applications_;
    std::unique_ptr<FocusHistory> focusHistory_;
    std::string whyNot_;
    Milliseconds deadline_; // of each step on the way
    std::chrono::steady_clock::time_point nextAttempt_{};
    bool attemptIsDue_ = false; // a timer will make it
    bool listening_ = false;
    bool enabled_ = false;
    std::atomic<bool> enabledIsKnown_ = false; // set to false on GDBus's thread, too
    std::shared_ptr<char> life_ = std::make_shared<char>();
    std::vector<std::unique_ptr<Subscription>> changes_; // of the services; last: they use what stands above
};

} // namespace platform::at_spi
