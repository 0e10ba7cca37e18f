// The services that accessibility rests on, killed while the host runs. The session's buses start them again
// when somebody calls them.
#include "linux/run_until.h"
#include "platform/accessibility.h"
#include "platform/linux/at_spi/accessibility_bus.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <csignal>

namespace platform {
namespace {

GDBusConnection* busAt(const std::string& address) {
    return g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
}

pid_t ownerOf(GDBusConnection* bus, const char* service) {
    const at_spi::Variant reply(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetConnectionUnixProcessID", g_variant_new("(s)", service), nullptr, G_DBUS_CALL_FLAGS_NONE, 5000,
        nullptr, nullptr));
    guint32 process = 0;
    if (reply) g_variant_get(reply.get(), "(u)", &process);
    return static_cast<pid_t>(process);
}

std::string accessibilityAddress(GDBusConnection* session) {
    const at_spi::Variant reply(g_dbus_connection_call_sync(session, "org.a11y.Bus", "/org/a11y/bus",
                                                            "org.a11y.Bus", "GetAddress", nullptr, nullptr,
                                                            G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr));
    const char* address = "";
    if (reply) g_variant_get(reply.get(), "(&s)", &address);
    return address;
}

std::string focusedText(const testbed::Fields& program) {
    const auto application = AXUIElementCreateApplication(program.process().pid());
    const auto element = AXUIElementCopyAttributeValue(application, "AXFocusedUIElement");
    const auto* focused = element ? std::get_if<AXUIElementRef>(&*element) : nullptr;
    if (focused == nullptr) return "(no element)";
    const auto value = AXUIElementCopyAttributeValue(*focused, "AXValue");
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? *text : "(no text)";
}

bool tellsOfItsFocus(const testbed::Fields& program) {
    auto& accessibility = at_spi::AccessibilityBus::shared();
    const auto found = accessibility.applications().of(*accessibility.bus(), program.process().pid());
    return found && !found->empty() && accessibility.focusHistory() != nullptr &&
           !accessibility.focusHistory()->of(found->front()->name).empty();
}

struct AccessibilityServices : testing::Test {
    void SetUp() override {
        accessibility.keepListening();
        ASSERT_TRUE(AXIsProcessTrustedWithOptions({.kAXTrustedCheckOptionPrompt = true}))
            << accessibility.whyNot();
    }

    // Kills one, whatever its bus then does about it.
    static void killOwner(GDBusConnection* bus, const char* service) {
        const pid_t process = ownerOf(bus, service);
        ASSERT_GT(process, 0);
        ASSERT_EQ(kill(process, SIGKILL), 0);
        ASSERT_TRUE(testbed::waitUntil([&] { return ownerOf(bus, service) != process; }));
    }

    void expectToReadAndHear(const char* text) {
        // On a busy machine a service takes longer to start than the host waits for it.
        EXPECT_TRUE(
            runUntil([] { return AXIsProcessTrustedWithOptions({.kAXTrustedCheckOptionPrompt = true}); }));
        testbed::Fields program(desktop, {std::string("entry=") + text, "entry=other"});
        EXPECT_TRUE(runUntil([&] { return focusedText(program) == text; })) << focusedText(program);
        EXPECT_TRUE(runUntil([&] {
            program.command("focus 1");
            program.command("focus 0");
            return tellsOfItsFocus(program);
        })) << "nobody told the new registry what the host wants to hear";
    }

    at_spi::AccessibilityBus& accessibility = at_spi::AccessibilityBus::shared();
    GDBusConnection* const sessionBus = busAt(std::getenv("DBUS_SESSION_BUS_ADDRESS"));
    testbed::Desktop desktop;
};

TEST_F(AccessibilityServices, MayBeStartedAgainWhileTheHostRuns) {
    GDBusConnection* const bus = busAt(accessibilityAddress(sessionBus));
    const testbed::Fields before(desktop, {"entry=before"});
    ASSERT_EQ(focusedText(before), "before");
    killOwner(bus, "org.a11y.atspi.Registry");
    EXPECT_EQ(focusedText(before), "before");
    expectToReadAndHear("with another registry");

    killOwner(sessionBus, "org.a11y.Bus");
    expectToReadAndHear("with another launcher and bus");
    kill(ownerOf(bus, "org.freedesktop.DBus"), SIGTERM); // the bus of the first launcher
    // It takes its socket with it, at the same path as the new one's. Other tests need a bus.
    EXPECT_TRUE(testbed::waitUntil([&] { return busAt(accessibilityAddress(sessionBus)) != nullptr; }));
}

} // namespace
} // namespace platform
