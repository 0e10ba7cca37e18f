#pragma once

#include <coroutine>
#include <exception>
#include <stop_token>
#include <utility>

// Background work. A coroutine that returns `Task` is a task: calling it starts it on the shared background
// executor, at default priority and never on the calling thread, and gives back its handle. A task that waits
// costs memory, not a thread. It runs on one thread at a time, not always the same.
//
//     platform::Task count(Stream stream) {
//         while (auto item = co_await stream.next()) co_await platform::Task::checkCancellation();
//     }
namespace platform {

// What a cancelled task, or an operation it waited for, fails with.
class CancellationError : public std::exception {
public:
    const char* what() const noexcept override { return "CancellationError()"; }
};

// The handle of one task. It yields no value and cannot fail. Copies refer to the same task; dropping them
// all leaves it running. Any thread.
class Task {
public:
    class promise_type;
    using Suspended = std::coroutine_handle<promise_type>;

    // Asks the task to cancel, and tells the operation it waits for. Whether anything comes of it is up to
    // them.
    void cancel() { cancellation_.request_stop(); }

    // Inside a task only, `co_await Task::checkCancellation()`: fails with a CancellationError once the task
    // has been asked to cancel.
    class CancellationTest;
    static CancellationTest checkCancellation();

private:
    explicit Task(std::stop_source cancellation) : cancellation_(std::move(cancellation)) {}

    std::stop_source cancellation_;
};

// The task's own side. An operation that a task waits for gets the task as `Suspended`, hears of a
// cancellation through `cancellation()`, and resumes it on the executor. It may instead destroy it, as when
// the program ends. An error must not leave the task: the program ends.
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
    // False: the task goes on at once.
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
