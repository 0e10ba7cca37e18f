#pragma once

#include <coroutine>
#include <exception>
#include <stop_token>
#include <utility>

// Background work. A coroutine that returns `Task` is a task: calling it starts it on the shared background
// executor, at default priority and never on the calling thread, and returns its handle. A task that waits
// costs memory and no thread. It runs on one thread at a time, which may change while it waits.
//
//     platform::Task count(Stream stream) {
//         while (auto item = co_await stream.next()) co_await platform::Task::checkCancellation();
//     }
namespace platform {

// The error of a cancelled task, or of an operation that it waited for.
class CancellationError : public std::exception {
public:
    const char* what() const noexcept override { return "CancellationError()"; }
};

// The handle of one task, which yields no value and cannot fail. Copies refer to the same task; the task runs
// on when all of them are destroyed. Any thread.
class Task {
public:
    class promise_type;
    using Suspended = std::coroutine_handle<promise_type>;

    // Asks the task, and the operation that it waits for, to stop. Each decides itself whether it does.
    void cancel() { cancellation_.request_stop(); }

    // Inside a task only, `co_await Task::checkCancellation()`: fails with a CancellationError once the task
    // has been asked to cancel.
    class CancellationTest;
    static CancellationTest checkCancellation();

private:
    explicit Task(std::stop_source cancellation) : cancellation_(std::move(cancellation)) {}

    std::stop_source cancellation_;
};

// For operations that tasks wait for. Such an operation gets the waiting task as `Suspended`, learns of a
// cancellation through `cancellation()`, and resumes the task in the background, or destroys it when the
// program ends. An error that leaves the task ends the program.
class Task::promise_type {
public:
    // Hands the new task to the executor; each desktop defines it.
    struct Start {
        bool await_ready() const noexcept { return false; }
        void await_suspend(Suspended task);
        void await_resume() const noexcept {}
    };

    std::stop_token cancellation() const { return cancellation_.get_token(); }

    Task get_return_object() const { return Task(cancellation_); }
    Start initial_suspend() const noexcept { return {}; }
    std::suspend_never final_suspend() const noexcept { return {}; }
    void return_void() const noexcept {}
    [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }

private:
    std::stop_source cancellation_;
};

class [[nodiscard]] Task::CancellationTest {
public:
    bool await_ready() const noexcept { return false; }
    // False: the task does not wait.
    bool await_suspend(Suspended task) {
        cancelled_ = task.promise().cancellation().stop_requested();
        return false;
    }
    void await_resume() const {
        if (cancelled_) throw CancellationError();
    }

private:
    bool cancelled_ = false;
};

inline Task::CancellationTest Task::checkCancellation() { return {}; }

} // namespace platform
