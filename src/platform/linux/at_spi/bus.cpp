#include "platform/linux/at_spi/bus.h"

#include "platform/linux/base/trace.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// Asynchronous operations started while it lives complete on `context`.
class CompletingOn {
public:
    explicit CompletingOn(GMainContext* context) : context_(context) {
        g_main_context_push_thread_default(context_);
    }
    ~CompletingOn() { g_main_context_pop_thread_default(context_); }
    CompletingOn(const CompletingOn&) = delete;
    CompletingOn& operator=(const CompletingOn&) = delete;

private:
    GMainContext* context_;
};

// Runs `context` until `done` or until `end`; what is ready at the start runs in any case.
template <typename Clock, typename Done>
void runUntil(GMainContext* context, std::chrono::time_point<Clock> end, Done done) {
    const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now()).count();
    bool passed = false;
    const Handle<GSource, g_source_unref> alarm(
        g_timeout_source_new(static_cast<guint>(std::max<std::int64_t>(left, 0))));
    const auto ring = [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
    };
    g_source_set_callback(alarm.get(), ring, &passed, nullptr);
    g_source_attach(alarm.get(), context);
    while (!done() && !passed)
        g_main_context_iteration(context, TRUE);
    g_source_destroy(alarm.get());
}

// After this long an unanswered call counts as failed, so that a program that lost one is called again.
constexpr Milliseconds callTimeout{30'000};

using Error = Handle<GError, g_error_free>;

Failure failureOf(const GError& error) {
    if (error.domain == G_IO_ERROR && (error.code == G_IO_ERROR_CLOSED || error.code == G_IO_ERROR_CANCELLED))
        return Failure::gone;
    if (error.domain != G_DBUS_ERROR) return Failure::refused;
    switch (error.code) {
    case G_DBUS_ERROR_SERVICE_UNKNOWN:
    case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
    case G_DBUS_ERROR_DISCONNECTED:
    case G_DBUS_ERROR_NO_REPLY: // the bus's error for a program that ended during the call
        return Failure::gone;
    default:
        return Failure::refused;
    }
}

std::string resultOf(const Reply& reply) {
    switch (reply.failure) {
    case Failure::none:
        return "";
    case Failure::late:
        return ": no reply";
    case Failure::gone:
        return ": the program is gone";
    case Failure::refused:
        return ": refused";
    }
    return "";
}

} // namespace

Call toBus(const char* method, const char* replyTypes, Variant arguments) {
    return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, replyTypes,
            std::move(arguments)};
}

void tell(GDBusConnection* connection, const Call& call) {
    g_dbus_connection_call(connection, call.program.c_str(), call.path.c_str(), call.interface, call.method,
                           call.arguments.get(), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
                           nullptr, nullptr);
}

struct Bus::PendingCall {
    Bus& bus;
    std::shared_ptr<PendingReply> pending;
    std::string words = {}; // for the trace
    Clock::time_point sent = Clock::now();

    static void finished(GObject* connection, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<PendingCall> call(static_cast<PendingCall*>(data));
        auto& bus = call->bus;
        const auto& pending = call->pending;
        GError* error = nullptr;
        pending->reply.value.reset(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error));
        pending->reply.failure = error == nullptr ? Failure::none : failureOf(*Error(error));
        if (trace::isOn())
            trace::write("host → " + call->words + " took " + trace::since(call->sent) +
                         resultOf(pending->reply));
        --bus.pending_;
        if (!pending->isOverdue) return;
        if (const auto owed = bus.owed_.find(pending->program); --owed->second == 0) bus.owed_.erase(owed);
    }
};

std::unique_ptr<Bus> Bus::connect(const std::string& address, Milliseconds deadline) {
    Context context(g_main_context_new());
    struct Attempt {
        bool done = false;
        BusConnection connection;
    } attempt;
    const Handle<GCancellable, g_object_unref> cancellable(g_cancellable_new());
    const CompletingOn here(context.get());
    const auto finished = [](GObject*, GAsyncResult* result, gpointer data) {
        auto& into = *static_cast<Attempt*>(data);
        into.connection.reset(g_dbus_connection_new_for_address_finish(result, nullptr));
        into.done = true;
    };
    g_dbus_connection_new_for_address(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, cancellable.get(), finished, &attempt);
    runUntil(context.get(), Clock::now() + deadline, [&] { return attempt.done; });
    g_cancellable_cancel(cancellable.get());
    while (!attempt.done)
        g_main_context_iteration(context.get(), TRUE);
    if (!attempt.connection) return nullptr;
    return std::unique_ptr<Bus>(new Bus(std::move(attempt.connection), std::move(context)));
}

Bus::Bus(BusConnection connection, Context context)
    : connection_(std::move(connection)), context_(std::move(context)), cancellable_(g_cancellable_new()) {}

Bus::~Bus() {
    g_cancellable_cancel(cancellable_.get());
    while (pending_ > 0)
        g_main_context_iteration(context_.get(), TRUE);
}

std::shared_ptr<PendingReply> Bus::send(const Call& call) {
    auto pending = std::make_shared<PendingReply>();
    pending->program = call.program;
    if (owed_.contains(call.program) || Clock::now() >= limit_) return pending;
    pending->isSent = true;
    auto underWay = std::make_unique<PendingCall>(PendingCall{*this, pending});
    if (trace::isOn())
        underWay->words = call.program + ' ' + call.interface + '.' + call.method + ' ' + call.path;
    const CompletingOn here(context_.get());
    ++pending_;
    g_dbus_connection_call(connection_.get(), call.program.c_str(), call.path.c_str(), call.interface,
                           call.method, call.arguments.get(), G_VARIANT_TYPE(call.replyTypes),
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(callTimeout.count()),
                           cancellable_.get(), &PendingCall::finished, underWay.release());
    return pending;
}

void Bus::wait(const std::vector<std::shared_ptr<PendingReply>>& replies, Milliseconds deadline) {
    const auto isMissing = [](const auto& pending) {
        return pending->isSent && pending->reply.failure == Failure::late;
    };
    const auto end = std::min(Clock::now() + deadline, limit_);
    runUntil(context_.get(), end, [&] { return std::ranges::none_of(replies, isMissing); });
    for (const auto& pending : replies)
        if (isMissing(pending) && !pending->isOverdue) {
            pending->isOverdue = true;
            ++owed_[pending->program];
        }
}

void Bus::takeWhatHasArrived() {
    while (g_main_context_iteration(context_.get(), FALSE)) {
    }
}

bool Bus::owes(const std::string& program) {
    takeWhatHasArrived();
    return owed_.contains(program);
}

std::vector<Reply> Bus::call(std::vector<Call> calls, Milliseconds deadline) {
    takeWhatHasArrived();
    std::vector<std::shared_ptr<PendingReply>> sent;
    for (const Call& each : calls)
        sent.push_back(send(each));
    wait(sent, deadline);
    std::vector<Reply> replies;
    for (const auto& pending : sent)
        replies.push_back(std::move(pending->reply));
    return replies;
}

Reply Bus::call(Call one, Milliseconds deadline) {
    std::vector<Call> calls;
    calls.push_back(std::move(one));
    return std::move(call(std::move(calls), deadline).front());
}

Bus::Budget::Budget(Bus& bus, Milliseconds time) : bus_(bus), outer_(bus.limit_) {
    bus_.limit_ = std::min(outer_, Clock::now() + time);
}

} // namespace platform::at_spi
