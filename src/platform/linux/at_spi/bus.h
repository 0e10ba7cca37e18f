#pragma once

#include "platform/linux/base/handle.h"

#include <gio/gio.h>

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

// Method calls to programs over a message bus, on a connection of our own. Main thread only.
//
// Replies are awaited on a main context of the connection's own, so that no other work of the host runs
// meanwhile.
namespace platform::at_spi {

using Milliseconds = std::chrono::milliseconds;
using Variant = Handle<GVariant, g_variant_unref>;

// A tuple of arguments, in GVariant's notation for types.
template <typename... Values>
Variant arguments(const char* types, Values... values) {
    return Variant(g_variant_ref_sink(g_variant_new(types, values...)));
}

struct Call {
    std::string program; // its name on the bus
    std::string path;
    const char* interface;
    const char* method;
    const char* replyTypes; // a tuple; a reply of another shape counts as refused
    Variant arguments;      // null: none
};

enum class Failure {
    none,
    late,   // not in time; also at once, while the program still owes the reply to an earlier call
    gone,   // there is no such program on the bus any more
    refused // the program replied with an error, or with other types than asked for
};

struct Reply {
    Variant value; // the tuple; null with any failure
    Failure failure = Failure::late;
};

// The reply to a call that was sent; `failure` is late until it has come.
struct PendingReply {
    Reply reply;
    std::string program;
    bool isSent = false;    // not while the program owes another reply
    bool isOverdue = false; // a deadline has passed
};

// A call to the bus itself.
Call toBus(const char* method, const char* replyTypes, Variant arguments = nullptr);

// Sends `call` and does not wait for the reply.
void tell(GDBusConnection* connection, const Call& call);

class Bus {
    using Clock = std::chrono::steady_clock;

public:
    // Null when there is no bus at that address, or it does not answer in time.
    static std::unique_ptr<Bus> connect(const std::string& address, Milliseconds deadline);
    ~Bus();
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    GDBusConnection* connection() const { return connection_.get(); }
    bool isClosed() const { return g_dbus_connection_is_closed(connection_.get()) != FALSE; }

    // Sends all `calls` together and waits for the replies, which come in the same order.
    //
    // Waits for `deadline` at most. A program that missed it is sent nothing more until it has replied to
    // what it owes: a hung program costs one deadline, however often it is called.
    std::vector<Reply> call(std::vector<Call> calls, Milliseconds deadline = usualDeadline);
    Reply call(Call one, Milliseconds deadline = usualDeadline);

    // Sends one call and does not wait. For a call that may take a program seconds: hold the result, and wait
    // for it again and again.
    std::shared_ptr<PendingReply> send(const Call& call);
    // Waits until all of them have come, for `deadline` at most.
    void wait(const std::vector<std::shared_ptr<PendingReply>>& replies,
              Milliseconds deadline = usualDeadline);

    // True while a call to that program is unanswered past its deadline.
    bool owes(const std::string& program);

    static constexpr Milliseconds usualDeadline{250};

    // Limits the time of all calls made while it lives, together. One inside another cannot exceed it.
    class Budget {
    public:
        Budget(Bus& bus, Milliseconds time);
        ~Budget() { bus_.limit_ = outer_; }
        Budget(const Budget&) = delete;
        Budget& operator=(const Budget&) = delete;

    private:
        Bus& bus_;
        Clock::time_point outer_;
    };

private:
    using BusConnection = Handle<GDBusConnection, g_object_unref>;
    using Context = Handle<GMainContext, g_main_context_unref>;
    struct PendingCall;

    Bus(BusConnection connection, Context context);
    void takeWhatHasArrived();

    BusConnection connection_;
    Context context_;
    Handle<GCancellable, g_object_unref> cancellable_;
    std::map<std::string, int> owed_; // calls unanswered past their deadline, by program
    std::size_t pending_ = 0;         // calls without a reply
    Clock::time_point limit_ = Clock::time_point::max();
};

} // namespace platform::at_spi
