#include "platform/linux/at_spi/subscription.h"

#include <cstring>
#include <mutex>

namespace platform::at_spi {
namespace {

bool isOr(const char* wanted, const char* value) {
    return wanted == nullptr || (value != nullptr && std::strcmp(wanted, value) == 0);
}

std::string matchRule(const SignalRule& rule) {
    std::string text = "type='signal',interface='" + std::string(rule.interface) + "'";
    if (!rule.program.empty()) text += ",sender='" + rule.program + "'";
    if (rule.member != nullptr) text += ",member='" + std::string(rule.member) + "'";
    if (rule.firstArgument != nullptr) text += ",arg0='" + std::string(rule.firstArgument) + "'";
    return text;
}

// The bus handles a connection's messages in order, so that the rule holds for whatever is asked afterwards.
void tellBus(GDBusConnection* connection, const char* method, const SignalRule& rule) {
    tell(connection, toBus(method, "()", arguments("(s)", matchRule(rule).c_str())));
}

} // namespace

// Shared with the connection, which may still be in the filter when the subscription has gone.
struct Subscription::Receiver {
    SignalRule rule;
    std::mutex mutex;
    Handler handler; // under the mutex; empty once the subscription has gone

    bool wants(GDBusMessage* message) const {
        return g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_SIGNAL &&
               isOr(rule.interface, g_dbus_message_get_interface(message)) &&
               isOr(rule.member, g_dbus_message_get_member(message)) &&
               isOr(rule.firstArgument, g_dbus_message_get_arg0(message)) &&
               isOr(rule.program.empty() ? nullptr : rule.program.c_str(),
                    g_dbus_message_get_sender(message));
    }

    void receive(GDBusMessage* message) {
        const char* program = g_dbus_message_get_sender(message);
        const char* path = g_dbus_message_get_path(message);
        const char* member = g_dbus_message_get_member(message);
        GVariant* body = g_dbus_message_get_body(message);
        if (program == nullptr || path == nullptr || member == nullptr || body == nullptr) return;
        const std::lock_guard lock(mutex);
        if (handler) handler({program, path, member, body});
    }

    static GDBusMessage* filter(GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer data) {
        const auto& receiver = *static_cast<std::shared_ptr<Receiver>*>(data);
        if (incoming != FALSE && receiver->wants(message)) receiver->receive(message);
        return message;
    }
};

Subscription::Subscription(Bus& bus, SignalRule rule, Handler handler)
    : connection_(G_DBUS_CONNECTION(g_object_ref(bus.connection()))),
      receiver_(std::make_shared<Receiver>()) {
    receiver_->rule = std::move(rule);
    receiver_->handler = std::move(handler);
    const auto release = [](gpointer data) { delete static_cast<std::shared_ptr<Receiver>*>(data); };
    filter_ = g_dbus_connection_add_filter(connection_.get(), &Receiver::filter,
                                           std::make_unique<std::shared_ptr<Receiver>>(receiver_).release(),
                                           release);
    tellBus(connection_.get(), "AddMatch", receiver_->rule);
}

Subscription::~Subscription() {
    tellBus(connection_.get(), "RemoveMatch", receiver_->rule);
    g_dbus_connection_remove_filter(connection_.get(), filter_);
    const std::lock_guard lock(receiver_->mutex);
    receiver_->handler = nullptr;
}

} // namespace platform::at_spi
