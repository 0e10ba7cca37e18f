#include "platform/linux/at_spi/session.h"

#include "platform/linux/at_spi/object.h"

#include <cstdlib>
#include <filesystem>

namespace platform::at_spi {
namespace {

using namespace std::chrono_literals;

// The accessibility bus is started by the question for its address: 0.4 s warm, 2 s on a cold machine, and
// when a desktop session starts, everything else does too.
constexpr Milliseconds startDeadline = 5s;
// Once it has run, whoever asks again is in the middle of a capture.
constexpr Milliseconds againDeadline = 800ms;
// How long a failed connection stays failed, so that a desktop without the bus does not cost this at every
// question.
constexpr auto pauseAfterFailure = 5s;

constexpr const char* launcher = "org.a11y.Bus";
constexpr const char* launcherPath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";

// Where the session bus is; empty when there is none. The library's own search would start one of its own.
std::string sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address != nullptr && *address != '\0')
        return address;
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const auto socket = std::filesystem::path(folder != nullptr ? folder : "/nonexistent") / "bus";
    std::error_code ignored;
    return std::filesystem::is_socket(socket, ignored) ? "unix:path=" + socket.string() : "";
}

// Has a bus start one of its services; at once when it runs already.
void start(Bus& bus, const char* service, Milliseconds deadline) {
    bus.ask({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "StartServiceByName",
             "(u)", arguments("(su)", service, 0U)},
            deadline);
}

std::unique_ptr<Bus> connectToAccessibilityBus(Bus& session, Milliseconds deadline) {
    start(session, launcher, deadline);
    const Answer address =
        session.ask({launcher, launcherPath, launcher, "GetAddress", "(s)", nullptr}, deadline);
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
    programs_ = {}; // another bus gives the same names to others
    session_.reset();
    accessibility_.reset();
    const std::string address = sessionBusAddress();
    if (!address.empty()) session_ = Bus::connect(address, deadline_);
    if (!session_) {
        whyNot_ = address.empty() ? "There is no session bus" : "The session bus does not answer";
        whyNot_ +=
            ", so other programs' text cannot be read: start this program inside a desktop session, or "
            "with dbus-run-session.";
        return false;
    }
    accessibility_ = connectToAccessibilityBus(*session_, deadline_);
    if (!accessibility_) {
        whyNot_ =
            "The accessibility bus does not answer, so other programs' text cannot be read: install the "
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
    return boolPropertyIn(session_->ask(property({launcher, launcherPath}, statusInterface, "IsEnabled")))
        .value_or(false);
}

bool Session::enable() {
    if (accessibilityBus() == nullptr) return false;
    const Answer answer =
        session_->ask({launcher, launcherPath, "org.freedesktop.DBus.Properties", "Set", "()",
                       arguments("(ssv)", statusInterface, "IsEnabled", g_variant_new_boolean(TRUE))});
    return answer.failure == Failure::none;
}

void Session::keepListening() {
    listening_ = true;
    if (accessibilityBus() != nullptr) registerEvents();
}

void Session::registerEvents() {
    std::vector<Question> questions;
    for (const char* event : {"object:state-changed:focused", "window:activate"})
        questions.push_back({registry, "/org/a11y/atspi/registry", registry, "RegisterEvent", "()",
                             arguments("(sass)", event, nullptr, "")});
    accessibility_->ask(std::move(questions), deadline_);
}

} // namespace platform::at_spi
