#pragma once

#include "platform/linux/at_spi/bus.h"

#include <functional>
#include <memory>
#include <string>

namespace platform::at_spi {

// A signal as the bus delivers it; good until the handler returns.
struct Signal {
    const char* program; // the sender's name on the bus
    const char* path;
    const char* member;
    GVariant* body; // a tuple of any shape
};

// Which signals are wanted.
struct SignalRule {
    std::string program; // empty: from any
    const char* interface;
    const char* member = nullptr;        // null: any
    const char* firstArgument = nullptr; // null: any
};

// Has the bus deliver such signals while it lives. It keeps the connection, which may outlive its Bus.
//
// The handler is called on GDBus's own thread, so that signals are taken in while the main thread waits or
// does something else. It may still be called until the destructor returns, and never afterwards.
class [[nodiscard]] Subscription {
public:
    using Handler = std::function<void(const Signal&)>;
    Subscription(Bus& bus, SignalRule rule, Handler handler);
    ~Subscription();
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    // True when it listens on that bus: after a reconnection there is another one.
    bool isOn(const Bus& bus) const { return bus.connection() == connection_.get(); }
    GDBusConnection* connection() const { return connection_.get(); }

private:
    struct Receiver;

    Handle<GDBusConnection, g_object_unref> connection_;
    std::shared_ptr<Receiver> receiver_;
    guint filter_;
};

} // namespace platform::at_spi
