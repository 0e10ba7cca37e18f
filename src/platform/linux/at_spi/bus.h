#pragma once

#include "platform/linux/base/handle.h"

#include <gio/gio.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Questions to programs over a message bus, on a connection of our own. Main thread only.
//
// Answers are awaited on a main context of the connection's own: nothing else of the host runs meanwhile.
namespace platform::at_spi {

using Milliseconds = std::chrono::milliseconds;

using Variant = Handle<GVariant, g_variant_unref>;

// A tuple of arguments, in the bus's own notation for types.
template <typename... Values>
Variant arguments(const char* types, Values... values) {
    return Variant(g_variant_ref_sink(g_variant_new(types, values...)));
}

// One method call.
struct Question {
    std::string program; // its name on the bus
    std::string path;
    const char* interface;
    const char* method;
    const char* answerTypes; // a tuple; an answer of another shape is refused
    Variant arguments;       // absent: none
};

enum class Failure {
    none,
    late,   // not in time; also at once, while the program still owes an earlier answer
    gone,   // there is no such program on the bus any more
    refused // the program answered, with an error or with something else than asked for
};

struct Answer {
    Variant value; // the tuple; absent with any failure
    Failure failure = Failure::late;
};

// Sends `question` and does not wait for the answer.
void tell(GDBusConnection* connection, const Question& question);

class Bus {
public:
    // Absent when there is no bus at that address, or it does not answer in time.
    static std::unique_ptr<Bus> connect(const std::string& address, Milliseconds deadline);
    ~Bus();
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    GDBusConnection* connection() const { return connection_.get(); }
    bool isClosed() const { return g_dbus_connection_is_closed(connection_.get()) != FALSE; }

    // Asks all `questions` together and waits for the answers, which come in the same order.
    //
    // Waits for `deadline` at most. A program that missed it is asked nothing more until it has answered
    // what it owes: a hung program costs one deadline, however often it is asked.
    std::vector<Answer> ask(std::vector<Question> questions, Milliseconds deadline = usualDeadline);
    Answer ask(Question question, Milliseconds deadline = usualDeadline);

    // True while a call to that program is unanswered past its deadline.
    bool owes(const std::string& program);

    static constexpr Milliseconds usualDeadline{250};

    // Bounds the time of all calls made while it lives, together. They do not nest.
    class Budget {
    public:
        Budget(Bus& bus, Milliseconds time);
        ~Budget() { bus_.limit_ = Clock::time_point::max(); }
        Budget(const Budget&) = delete;
        Budget& operator=(const Budget&) = delete;

    private:
        Bus& bus_;
    };

private:
    using Clock = std::chrono::steady_clock;
    using Connection = Handle<GDBusConnection, g_object_unref>;
    using Context = Handle<GMainContext, g_main_context_unref>;
    struct Round;
    struct Call;

    Bus(Connection connection, Context context);
    void send(const Question& question, const std::shared_ptr<Round>& round, std::size_t index);
    void takeWhatHasArrived();

    Connection connection_;
    Context context_;
    Handle<GCancellable, g_object_unref> cancellable_;
    std::map<std::string, int> owed_; // unanswered calls past their deadline, by program
    std::size_t underWay_ = 0;
    Clock::time_point limit_ = Clock::time_point::max();
};

} // namespace platform::at_spi
