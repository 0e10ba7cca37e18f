#include "fake_bus.h"

#include "check.h"

#include <gio/gunixsocketaddress.h>
#include <unistd.h>

#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace {

using Listener = platform::Handle<GSocketListener, g_object_unref>;

GDBusConnection* accept(GSocketListener* listener) {
    const platform::Handle<GSocketConnection, g_object_unref> socket(
        g_socket_listener_accept(listener, nullptr, nullptr, nullptr));
    const platform::Handle<char, g_free> identity(g_dbus_generate_guid());
    return g_dbus_connection_new_sync(
        G_IO_STREAM(socket.get()), identity.get(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_SERVER |
                                          G_DBUS_CONNECTION_FLAGS_DELAY_MESSAGE_PROCESSING),
        nullptr, nullptr, nullptr);
}

} // namespace

FakeBus::FakeBus()
    : folder_(std::filesystem::temp_directory_path() / ("quillmark-fake-bus." + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_);
    const auto path = folder_ / "bus";
    const Listener listener(g_socket_listener_new());
    const platform::Handle<GSocketAddress, g_object_unref> address(g_unix_socket_address_new(path.c_str()));
    check(g_socket_listener_add_address(listener.get(), address.get(), G_SOCKET_TYPE_STREAM,
                                        G_SOCKET_PROTOCOL_DEFAULT, nullptr, nullptr, nullptr) != FALSE);
    std::thread serving([&] {
        server_.reset(accept(listener.get()));
        check(server_ != nullptr);
        g_dbus_connection_add_filter(server_.get(), &FakeBus::handle, this, nullptr);
        g_dbus_connection_start_message_processing(server_.get());
    });
    client_ = platform::at_spi::Bus::connect("unix:path=" + path.string(), 10s);
    serving.join();
    check(client_ != nullptr);
    std::filesystem::remove_all(folder_);
}

FakeBus::~FakeBus() { client_.reset(); }

void FakeBus::setAnswer(CallHandler answer) {
    const std::lock_guard lock(mutex_);
    answer_ = std::move(answer);
}

GVariant* FakeBus::replyTo(GDBusMessage& call) {
    const std::string_view method = g_dbus_message_get_member(&call);
    if (method == "Hello") return g_variant_new("(s)", ":1.1");
    const std::lock_guard lock(mutex_);
    return answer_ ? answer_(method) : nullptr;
}

GDBusMessage* FakeBus::handle(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                              gpointer bus) {
    if (incoming == FALSE || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    using Message = platform::Handle<GDBusMessage, g_object_unref>;
    const Message call(message);
    Message reply;
    if (GVariant* body = static_cast<FakeBus*>(bus)->replyTo(*call)) {
        reply.reset(g_dbus_message_new_method_reply(call.get()));
        g_dbus_message_set_body(reply.get(), body);
    } else {
        reply.reset(g_dbus_message_new_method_error(call.get(), "org.freedesktop.DBus.Error.Failed", "no"));
    }
    if ((g_dbus_message_get_flags(call.get()) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) == 0)
        g_dbus_connection_send_message(connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
    return nullptr;
}
