#include "bench/bare_round_trips.h"

#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/at_spi/bus.h"
#include "platform/linux/at_spi/focus.h"
#include "platform/linux/at_spi/object.h"
#include "platform/linux/at_spi/text.h"
#include "platform/linux/at_spi/windows.h"
#include "platform/linux/x11/windows/front_window.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

using namespace platform;
using at_spi::Call;
using Clock = std::chrono::steady_clock;

at_spi::Object focusedFieldOf(at_spi::Bus& bus, at_spi::Application& program) {
    const auto field = at_spi::focusedElement(bus, program, nullptr);
    if (!field) throw std::runtime_error("The program shows no focused field.");
    return field->object;
}

Call textCall(const at_spi::Object& field, const char* method, const char* reply, at_spi::Variant arguments) {
    return {field.program, field.path, "org.a11y.atspi.Text", method, reply, std::move(arguments)};
}

std::vector<Call> questionsOf(const at_spi::Object& window, const at_spi::Object& field) {
    std::vector<Call> calls;
    calls.push_back(at_spi::stateOf(window)); // still in front?
    calls.push_back(at_spi::stateOf(field));  // still focused?
    calls.push_back(at_spi::roleOf(field));
    calls.push_back(at_spi::interfacesOf(field));
    calls.push_back(at_spi::roleOf(field)); // a password by now?
    calls.push_back(at_spi::stateOf(window));
    calls.push_back(at_spi::allText(field));
    for (const bool withText : {true, false}) { // the selected text, then its range
        calls.push_back(textCall(field, "GetNSelections", "(i)", nullptr));
        calls.push_back(textCall(field, "GetSelection", "(ii)", at_spi::arguments("(i)", 0)));
        if (withText) calls.push_back(at_spi::textBetween(field, 0, 4));
    }
    calls.push_back(at_spi::nameOf(window));
    return calls;
}

} // namespace

struct BareRoundTrips::Target {
    GDBusConnection* accessibilityBus = nullptr;
    GDBusConnection* sessionBus = nullptr;
    at_spi::Bus* bus = nullptr; // the one that the host uses
    at_spi::Object window, field;

    void ask(GDBusConnection* connection, const Call& call) const {
        at_spi::Variant reply(g_dbus_connection_call_sync(
            connection, call.program.c_str(), call.path.c_str(), call.interface, call.method,
            call.arguments.get(), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, 5000, nullptr, nullptr));
        if (!reply) throw std::runtime_error(std::string("No reply to ") + call.method);
    }
};

BareRoundTrips::BareRoundTrips(pid_t process) : target_(std::make_unique<Target>()) {
    auto& accessibility = at_spi::AccessibilityBus::shared();
    auto* bus = accessibility.bus();
    if (bus == nullptr) throw std::runtime_error(accessibility.whyNot());
    const auto programs = accessibility.applications().of(*bus, process);
    if (!programs || programs->empty())
        throw std::runtime_error("The program is not on the accessibility bus.");
    auto& program = *programs->front();
    target_->bus = bus;
    target_->field = focusedFieldOf(*bus, program);
    target_->window = at_spi::activeWindow(*bus, program).value();

    const auto connect = [](const char* address) {
        return g_dbus_connection_new_for_address_sync(
            address,
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr);
    };
    target_->sessionBus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    at_spi::Variant address(g_dbus_connection_call_sync(target_->sessionBus, "org.a11y.Bus", "/org/a11y/bus",
                                                        "org.a11y.Bus", "GetAddress", nullptr, nullptr,
                                                        G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr));
    const char* text = nullptr;
    g_variant_get(address.get(), "(&s)", &text);
    target_->accessibilityBus = connect(text);
}

BareRoundTrips::~BareRoundTrips() = default;

std::chrono::nanoseconds BareRoundTrips::accessibility() const {
    const auto start = Clock::now();
    target_->ask(target_->sessionBus,
                 at_spi::property({"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Status", "IsEnabled"));
    for (const auto& call : questionsOf(target_->window, target_->field))
        target_->ask(target_->accessibilityBus, call);
    return Clock::now() - start;
}

std::chrono::nanoseconds BareRoundTrips::accessibilityAtOnce() const {
    const auto start = Clock::now();
    const auto replies = target_->bus->call(questionsOf(target_->window, target_->field));
    const auto took = Clock::now() - start;
    if (std::ranges::any_of(replies,
                            [](const auto& reply) { return reply.failure != at_spi::Failure::none; }))
        throw std::runtime_error("A question that was sent with others has no reply.");
    return took;
}

std::chrono::nanoseconds BareRoundTrips::display() const {
    const auto start = Clock::now();
    const auto window = x11::activeWindow();
    x11::focusedWindow();
    x11::windowProcess(window);
    x11::windowTitle(window);
    return Clock::now() - start;
}

} // namespace bench
