#pragma once

#include "platform/task.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// An answer that grows: its maker adds to it, and a task takes the newest text each time that giveTurn() lets
// it. The text is held once, however fast the maker is and however slow the task. Shared by the two. Any
// thread, but one maker and one task.
class Answer {
public:
    // The maker's side. Only the first end, refusal or failure counts; what comes behind it is dropped.
    // Text is added on a background thread, and a task that waits for it goes on inside the call: another
    // thread would have to wake up first.
    void add(std::string_view text);
    // What has been added was no part of the answer.
    void startOver();
    void end(std::optional<std::int64_t> tokens);
    void refuse(std::string sentence);
    void fail(std::string sentence);
    // False once it was cancelled.
    bool isWanted() const;
    // Called once, on any thread, as soon as nobody wants the answer; it must not block.
    void whenUnwanted(std::function<void()> stop);

    // The task's side. Whether take() has a result, or all of the answer; if not, the task waits until it
    // has.
    enum class Until { newText, end };
    bool isReady(Until until) const;
    void wait(Until until, Task::Suspended task);
    // All text so far, if some of it is new; absent at the end. After it, nothing may be taken until
    // giveTurn(). This and text() throw a CancellationError, a LanguageModelSession::GenerationError for a
    // refusal, or another std::exception.
    std::optional<std::string> take();
    std::string text() const;
    // New text may be taken once at the beginning, and once more after each call of this.
    void giveTurn();
    std::optional<std::int64_t> tokens() const;
    // Nobody wants the rest: unless it has ended, the answer fails with a CancellationError.
    void cancel();

private:
    enum class State { growing, ended, refused, failed, cancelled };

    bool isReadyLocked(Until until) const;
    void finish(State state, std::string sentence, std::optional<std::int64_t> tokens = std::nullopt);
    void throwIfWithoutEnd() const;
    void wake(std::unique_lock<std::mutex> lock);
    Task::Suspended takeReadyTask();

    mutable std::mutex mutex_;
    std::string text_;
    bool hasNewText_ = false;
    bool hasTurn_ = true;
    State state_ = State::growing;
    bool wanted_ = true;
    std::string sentence_; // of the refusal or failure
    std::optional<std::int64_t> tokens_;
    std::function<void()> stop_;
    Task::Suspended waiting_;
    Until waitingUntil_ = Until::newText;
};

} // namespace platform
