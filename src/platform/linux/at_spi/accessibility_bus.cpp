#include "platform/linux/at_spi/accessibility_bus.h"

#include "platform/linux/at_spi/object.h"
#include "platform/linux/at_spi/session_bus.h"
#include "platform/main_queue.h"

#include <utility>

namespace platform::at_spi {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Of each step of the first connection, at the host's start. Asking for the bus's address starts the bus: 0.4
// s on a warm machine, 2 s on a cold one, more at log-in.
constexpr Milliseconds startDeadline = 5s;
// Of each step of later connections, which a capture waits for.
constexpr Milliseconds againDeadline = 800ms;
// Between attempts to connect that nothing else asks for.
constexpr Seconds pauseBetweenAttempts{3};
// A desktop without the bus says so at once. After a connection that took longer than this to fail, the next
// one is not tried before the pause is over, so that a bus that hangs does not delay every query.
constexpr auto quickFailure = 100ms;
constexpr auto pauseAfterSlowFailure = 30s;

constexpr const char* launcher = "org.a11y.Bus";
constexpr const char* launcherPath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";

// Has a bus start one of its services, and waits until it runs.
void start(Bus& bus, const char* service, Milliseconds deadline) {
    bus.call(toBus("StartServiceByName", "(u)", arguments("(su)", service, 0U)), deadline);
}

// Where the accessibility bus is, which its launcher starts for this; empty when there is none.
std::string accessibilityBusAddress(Bus& session, Milliseconds deadline) {
    start(session, launcher, deadline);
    return stringIn(session.call({launcher, launcherPath, launcher, "GetAddress", "(s)", nullptr}, deadline))
        .value_or("");
}

SignalRule ownerChangesOf(const char* service) {
    return {"org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", service};
}

// NameOwnerChanged: name, old owner, new owner.
bool hasOwner(const Signal& change) {
    if (!g_variant_is_of_type(change.body, G_VARIANT_TYPE("(sss)"))) return false;
    const char* owner = nullptr;
    g_variant_get_child(change.body, 2, "&s", &owner);
    return *owner != '\0';
}

} // namespace

AccessibilityBus& AccessibilityBus::shared() {
    static AccessibilityBus bus;
    return bus;
}

AccessibilityBus::AccessibilityBus() : deadline_(startDeadline) {}

void AccessibilityBus::disconnect() {
    changes_.clear();
    focusHistory_.reset();
    applications_ = {}; // the next bus gives the same names to other programs
    accessibility_.reset();
    session_.reset();
    enabledIsKnown_ = false;
}

bool AccessibilityBus::connect() {
    disconnect();
    const std::string address = sessionBusAddress();
    if (!address.empty()) session_ = Bus::connect(address, deadline_);
    if (!session_) {
        whyNot_ = address.empty() ? "There is no session bus." : "The session bus does not answer.";
        whyNot_ += " Start this program inside a desktop session, or with dbus-run-session.";
        return false;
    }
    address_ = accessibilityBusAddress(*session_, deadline_);
    if (!address_.empty()) accessibility_ = Bus::connect(address_, deadline_);
    if (!accessibility_) {
        whyNot_ = "The accessibility bus does not answer. Install the package at-spi2-core, then log out and "
                  "in again.";
        return false;
    }
    start(*accessibility_, registry, deadline_);
    whyNot_.clear();
    deadline_ = againDeadline;
    watchServices();
    return true;
}

Bus* AccessibilityBus::bus() {
    if (!isConnected() && Clock::now() >= nextAttempt_) attemptToConnect();
    if (isConnected()) return accessibility_.get();
    if (listening_) tryAgainLater();
    return nullptr;
}

bool AccessibilityBus::isConnected() const {
    return session_ && accessibility_ && !session_->isClosed() && !accessibility_->isClosed();
}

void AccessibilityBus::attemptToConnect() {
    const auto begin = Clock::now();
    if (connect()) {
        if (listening_) registerEvents();
        return;
    }
    const auto end = Clock::now();
    if (end - begin > quickFailure) nextAttempt_ = end + pauseAfterSlowFailure;
    disconnect();
}

// Programs that start rely on the switch and on what they are told, long before the person wants a text.
void AccessibilityBus::tryAgainLater() {
    if (std::exchange(attemptIsDue_, true)) return;
    MainQueue::asyncAfter(pauseBetweenAttempts, life_, [this] {
        attemptIsDue_ = false;
        enable();
    });
}

std::optional<bool> AccessibilityBus::readSwitch() {
    const Reply reply = session_->call(property({launcher, launcherPath}, statusInterface, "IsEnabled"));
    if (reply.failure != Failure::gone) return boolPropertyIn(reply);
    start(*session_, launcher, deadline_); // it has ended, and the bus lives on
    return boolPropertyIn(session_->call(property({launcher, launcherPath}, statusInterface, "IsEnabled")));
}

bool AccessibilityBus::isEnabled() {
    if (bus() == nullptr) return false;
    // Before the call: a change that comes after the reply makes it unknown again.
    if (enabledIsKnown_.exchange(true)) return enabled_;
    const auto found = readSwitch();
    if (!found) enabledIsKnown_ = false;
    enabled_ = found.value_or(false);
    return enabled_;
}

bool AccessibilityBus::enable() {
    if (isEnabled()) return true;
    if (bus() == nullptr) return false;
    const Reply reply =
        session_->call({launcher, launcherPath, "org.freedesktop.DBus.Properties", "Set", "()",
                        arguments("(ssv)", statusInterface, "IsEnabled", g_variant_new_boolean(TRUE))});
    enabledIsKnown_ = false;
    return reply.failure == Failure::none;
}

void AccessibilityBus::watchServices() {
    const auto watch = [this](Bus& bus, SignalRule rule, Subscription::Handler handler) {
        changes_.push_back(std::make_unique<Subscription>(bus, std::move(rule), std::move(handler)));
    };
    watch(*session_, {"", "org.freedesktop.DBus.Properties", "PropertiesChanged", statusInterface},
          [this](const Signal&) { enabledIsKnown_ = false; });
    watch(*session_, ownerChangesOf(launcher), [this](const Signal& change) {
        enabledIsKnown_ = false;
        if (hasOwner(change)) MainQueue::async(life_, [this] { followLauncher(); });
    });
    watch(*accessibility_, ownerChangesOf(registry), [this](const Signal& change) {
        if (hasOwner(change)) MainQueue::async(life_, [this] { keepListening(); });
    });
}

// A launcher that was started again starts a bus of its own. The old bus lives on with the programs that are
// on it; those that start from now on are on the new one.
void AccessibilityBus::followLauncher() {
    if (!session_ || accessibilityBusAddress(*session_, deadline_) == address_) return;
    disconnect();
    bus();
}

void AccessibilityBus::keepListening() {
    listening_ = true;
    const bool wasConnected = isConnected();
    if (bus() != nullptr && wasConnected) registerEvents();
}

// Chromium 156 builds its elements when it is asked for a window's attributes, for a long page in 1 to 5
// seconds; asked once its window is in front, it has them when the person presses the hot key.
void AccessibilityBus::wakeActiveWindows() {
    changes_.push_back(std::make_unique<Subscription>(
        *accessibility_, SignalRule{"", "org.a11y.atspi.Event.Window", "Activate"},
        [connection = accessibility_->connection()](const Signal& signal) {
            tell(connection, attributesOf({signal.program, signal.path}));
        }));
}

void AccessibilityBus::registerEvents() {
    if (!focusHistory_) {
        focusHistory_ = std::make_unique<FocusHistory>(*accessibility_);
        wakeActiveWindows();
    }
    std::vector<Call> calls;
    for (const char* event : {"object:state-changed:focused", "window:activate"})
        calls.push_back({registry, "/org/a11y/atspi/registry", registry, "RegisterEvent", "()",
                         arguments("(sass)", event, nullptr, "")});
    accessibility_->call(std::move(calls), deadline_);
}

} // namespace platform::at_spi
