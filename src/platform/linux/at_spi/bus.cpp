#include "platform/linux/at_spi/bus.h"

#include <algorithm>

namespace platform::at_spi {
namespace {

// What is started while it lives reports to `context`.
class ReportingTo {
public:
    explicit ReportingTo(GMainContext* context) : context_(context) {
        g_main_context_push_thread_default(context_);
    }
    ~ReportingTo() { g_main_context_pop_thread_default(context_); }
    ReportingTo(const ReportingTo&) = delete;
    ReportingTo& operator=(const ReportingTo&) = delete;

private:
    GMainContext* context_;
};

// Runs `context` until `done` or until `end`; at least once what is ready by then.
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

// After this long a call counts as answered, so that a program that lost one is asked again some day.
constexpr Milliseconds forgiveness{30'000};

using Error = Handle<GError, g_error_free>;

Failure failureOf(const GError& error) {
    if (error.domain == G_IO_ERROR && (error.code == G_IO_ERROR_CLOSED || error.code == G_IO_ERROR_CANCELLED))
        return Failure::gone;
    if (error.domain != G_DBUS_ERROR) return Failure::refused;
    switch (error.code) {
    case G_DBUS_ERROR_SERVICE_UNKNOWN:
    case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
    case G_DBUS_ERROR_DISCONNECTED:
    case G_DBUS_ERROR_NO_REPLY: // the bus's word for a program that ended while it was asked
        return Failure::gone;
    default:
        return Failure::refused;
    }
}

} // namespace

void tell(GDBusConnection* connection, const Question& question) {
    g_dbus_connection_call(connection, question.program.c_str(), question.path.c_str(), question.interface,
                           question.method, question.arguments.get(), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
}

// Calls that are awaited together.
struct Bus::Round {
    std::vector<Answer> answers;
    std::size_t missing = 0;
};

// One call under way; it outlives its round when its answer is late.
struct Bus::Call {
    Bus& bus;
    std::string program;
    std::weak_ptr<Round> round;
    std::size_t index;

    static void arrived(GObject* connection, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Call> call(static_cast<Call*>(data));
        GError* error = nullptr;
        Answer answer;
        answer.value.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &error));
        answer.failure = error == nullptr ? Failure::none : failureOf(*Error(error));
        --call->bus.underWay_;
        if (const auto round = call->round.lock()) {
            round->answers[call->index] = std::move(answer);
            --round->missing;
        } else if (const auto owed = call->bus.owed_.find(call->program); owed != call->bus.owed_.end()) {
            if (--owed->second == 0) call->bus.owed_.erase(owed);
        }
    }
};

std::unique_ptr<Bus> Bus::connect(const std::string& address, Milliseconds deadline) {
    Context context(g_main_context_new());
    struct Attempt {
        bool done = false;
        Connection connection;
    } attempt;
    const Handle<GCancellable, g_object_unref> cancellable(g_cancellable_new());
    const ReportingTo here(context.get());
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

Bus::Bus(Connection connection, Context context)
    : connection_(std::move(connection)), context_(std::move(context)), cancellable_(g_cancellable_new()) {}

Bus::~Bus() {
    g_cancellable_cancel(cancellable_.get());
    while (underWay_ > 0)
        g_main_context_iteration(context_.get(), TRUE);
}

void Bus::send(const Question& question, const std::shared_ptr<Round>& round, std::size_t index) {
    auto call = std::make_unique<Call>(Call{*this, question.program, round, index});
    ++underWay_;
    g_dbus_connection_call(connection_.get(), question.program.c_str(), question.path.c_str(),
                           question.interface, question.method, question.arguments.get(),
                           G_VARIANT_TYPE(question.answerTypes), G_DBUS_CALL_FLAGS_NO_AUTO_START,
                           static_cast<int>(forgiveness.count()), cancellable_.get(), &Call::arrived,
                           call.release());
}

void Bus::takeWhatHasArrived() {
    while (g_main_context_iteration(context_.get(), FALSE)) {
    }
}

bool Bus::owes(const std::string& program) {
    takeWhatHasArrived();
    return owed_.contains(program);
}

std::vector<Answer> Bus::ask(std::vector<Question> questions, Milliseconds deadline) {
    const auto round = std::make_shared<Round>();
    round->answers.resize(questions.size());
    const auto end = std::min(Clock::now() + deadline, limit_);
    if (Clock::now() >= limit_) return std::move(round->answers);

    const ReportingTo here(context_.get());
    takeWhatHasArrived();
    std::vector<std::size_t> sent;
    for (std::size_t i = 0; i < questions.size(); ++i) {
        if (owed_.contains(questions[i].program)) continue;
        sent.push_back(i);
        ++round->missing;
        send(questions[i], round, i);
    }
    if (round->missing > 0) runUntil(context_.get(), end, [&] { return round->missing == 0; });
    if (round->missing > 0)
        for (const std::size_t i : sent)
            if (round->answers[i].failure == Failure::late) ++owed_[questions[i].program];
    return std::move(round->answers);
}

Answer Bus::ask(Question question, Milliseconds deadline) {
    std::vector<Question> questions;
    questions.push_back(std::move(question));
    return std::move(ask(std::move(questions), deadline).front());
}

Bus::Budget::Budget(Bus& bus, Milliseconds time) : bus_(bus) { bus_.limit_ = Clock::now() + time; }

} // namespace platform::at_spi
