#include "platform/linux/at_spi/session.h"

#include "platform/linux/at_spi/object.h"

#include <cstdlib>
#include <filesystem>

namespace platform::at_spi {
namespace {

using namespace std::chrono_literals;

// Of each step of the first connection, at the host's start. Asking for the bus's address starts the bus: 0.4
// s on a warm machine, 2 s on a cold one, more at log-in.
constexpr Milliseconds startDeadline = 5s;
// Of each step of later connections, which a capture waits for.
constexpr Milliseconds againDeadline = 800ms;
// After a failed connection the next one is not tried before this, so that a desktop without the bus does not
// delay every query.
constexpr auto pauseAfterFailure = 5s;

constexpr const char* launcher = "org.a11y.Bus";
constexpr const char* launcherPath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";

// Where the session bus is; empty when there is none. GIO's own search would start a new bus then.
std::string sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address != nullptr && *address != '\0')
        return address;
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const auto socket = std::filesystem::path(folder != nullptr ? folder : "/nonexistent") / "bus";
    std::error_code ignored;
    return std::filesystem::is_socket(socket, ignored) ? "unix:path=" + socket.string() : "";
}

// Has a bus start one of its services, and waits until it runs.
void start(Bus& bus, const char* service, Milliseconds deadline) {
    bus.call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "StartServiceByName",
              "(u)", arguments("(su)", service, 0U)},
             deadline);
}

std::unique_ptr<Bus> connectToAccessibilityBus(Bus& session, Milliseconds deadline) {
    start(session, launcher, deadline);
    const Reply address =
        session.call({launcher, launcherPath, launcher, "GetAddress", "(s)", nullptr}, deadline);
    if (!address.value) return nullptr;
    auto bus = Bus::connect(stringIn(address).value_or(""), deadline);
    if (bus) start(*bus, registry, deadline);
    return bus;
}

} // namespace

Session& Session::shared() {
    static Session session;
    return session;
}

Session::Session() : deadline_(startDeadline) {}

bool Session::connect() {
    applications_ = {}; // the new bus gives the same names to other programs
    session_.reset();
    accessibility_.reset();
    const std::string address = sessionBusAddress();
    if (!address.empty()) session_ = Bus::connect(address, deadline_);
    if (!session_) {
        whyNot_ = address.empty() ? "There is no session bus" : "The session bus does not reply";
        whyNot_ +=
            ", so other programs' text cannot be read: start this program inside a desktop session, or "
            "with dbus-run-session.";
        return false;
    }
    accessibility_ = connectToAccessibilityBus(*session_, deadline_);
    if (!accessibility_) {
        whyNot_ = "The accessibility bus does not reply, so other programs' text cannot be read: install the "
                  "package at-spi2-core, then log out and in again.";
        return false;
    }
    whyNot_.clear();
    deadline_ = againDeadline;
    return true;
}

Bus* Session::accessibilityBus() {
    if (session_ && accessibility_ && !session_->isClosed() && !accessibility_->isClosed())
        return accessibility_.get();
    const auto now = std::chrono::steady_clock::now();
    if (now < nextAttempt_) return nullptr;
    if (!connect()) {
        accessibility_.reset();
        nextAttempt_ = std::chrono::steady_clock::now() + pauseAfterFailure;
        return nullptr;
    }
    if (listening_) registerEvents();
    return accessibility_.get();
}

bool Session::isEnabled() {
    if (accessibilityBus() == nullptr) return false;
    return boolPropertyIn(session_->call(property({launcher, launcherPath}, statusInterface, "IsEnabled")))
        .value_or(false);
}

bool Session::enable() {
    if (accessibilityBus() == nullptr) return false;
    const Reply reply =
        session_->call({launcher, launcherPath, "org.freedesktop.DBus.Properties", "Set", "()",
                        arguments("(ssv)", statusInterface, "IsEnabled", g_variant_new_boolean(TRUE))});
    return reply.failure == Failure::none;
}

void Session::keepListening() {
    listening_ = true;
    if (accessibilityBus() != nullptr) registerEvents();
}

void Session::registerEvents() {
    std::vector<Call> calls;
    for (const char* event : {"object:state-changed:focused", "window:activate"})
        calls.push_back({registry, "/org/a11y/atspi/registry", registry, "RegisterEvent", "()",
                         arguments("(sass)", event, nullptr, "")});
    accessibility_->call(std::move(calls), deadline_);
}

} // namespace platform::at_spi
