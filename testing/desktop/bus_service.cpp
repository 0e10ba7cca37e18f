#include "testing/desktop/bus_service.h"

#include <stdexcept>

namespace testbed {

namespace {

// What GDBus hands to the two functions below.
struct Functions {
    BusService::CallHandler answer;
    BusService::PropertyHandler property;
};

void called(GDBusConnection*, const char* sender, const char*, const char*, const char* method,
            GVariant* arguments, GDBusMethodInvocation* invocation, gpointer data) {
    auto* result = static_cast<Functions*>(data)->answer(sender, method, arguments);
    g_dbus_method_invocation_return_value(invocation, result);
}

GVariant* asked(GDBusConnection*, const char*, const char*, const char*, const char* name, GError**,
                gpointer data) {
    return static_cast<Functions*>(data)->property(name);
}

constexpr GDBusInterfaceVTable callbacks{called, asked, nullptr, {}};

} // namespace

struct BusService::Native {
    Functions functions;
    GMainContext* context = g_main_context_new();
    GDBusConnection* bus = nullptr;
    GDBusNodeInfo* description = nullptr;

    ~Native() {
        if (bus != nullptr) {
            g_dbus_connection_close_sync(bus, nullptr, nullptr);
            g_object_unref(bus);
        }
        if (description != nullptr) g_dbus_node_info_unref(description);
        g_main_context_unref(context);
    }

    const char* interface() const { return description->interfaces[0]->name; }
};

BusService::BusService(const std::string& name, const std::string& path, const std::string& interface,
                       CallHandler answer, PropertyHandler property)
    : native_(std::make_unique<Native>()), path_(path) {
    auto& own = *native_;
    own.functions = {std::move(answer), std::move(property)};
    const std::string xml = "<node>" + interface + "</node>";
    own.description = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
    const std::unique_ptr<char, decltype([](gpointer text) { g_free(text); })> address(
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    g_main_context_push_thread_default(own.context);
    own.bus = g_dbus_connection_new_for_address_sync(
        address.get(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    const guint number =
        own.bus == nullptr || own.description == nullptr
            ? 0
            : g_dbus_connection_register_object(own.bus, path.c_str(), own.description->interfaces[0],
                                                &callbacks, &own.functions, nullptr, nullptr);
    g_main_context_pop_thread_default(own.context);
    if (number == 0) throw std::runtime_error("There is no session bus. Use script/virtual-desktop.");

    constexpr guint onlyOwner = 4, owned = 1; // of D-Bus's RequestName
    guint outcome = 0;
    if (const auto reply = call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                "RequestName", g_variant_new("(su)", name.c_str(), onlyOwner)))
        g_variant_get(reply.get(), "(u)", &outcome);
    if (outcome != owned) throw std::runtime_error("Another program is " + name + " already.");
}

BusService::~BusService() = default;

void BusService::serve() {
    while (g_main_context_iteration(native_->context, FALSE) != FALSE) {
    }
}

void BusService::emit(const std::string& signal, GVariant* arguments) {
    g_dbus_connection_emit_signal(native_->bus, nullptr, path_.c_str(), native_->interface(), signal.c_str(),
                                  arguments, nullptr);
    g_dbus_connection_flush_sync(native_->bus, nullptr, nullptr);
}

BusValue BusService::call(const std::string& program, const std::string& path, const std::string& interface,
                          const std::string& method, GVariant* arguments) {
    constexpr int deadline = 2000;
    return BusValue(g_dbus_connection_call_sync(native_->bus, program.c_str(), path.c_str(),
                                                interface.c_str(), method.c_str(), arguments, nullptr,
                                                G_DBUS_CALL_FLAGS_NONE, deadline, nullptr, nullptr));
}

} // namespace testbed
