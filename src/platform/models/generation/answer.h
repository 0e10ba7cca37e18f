// An answer on its way from the model that makes it to the task that waits for it: the maker adds pieces, the
// task takes them one by one. Shared by the two. Any thread, but one maker and one task.
#pragma once

#include "platform/task.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

class Answer {
public:
    // The maker's side. Only the first end or failure counts; what comes behind it is dropped.
    void add(std::string piece);
    void end(std::optional<std::int64_t> tokens);
    void fail(std::string sentence);
    // False once it was cancelled.
    bool isWanted() const;
    // Called once, on any thread, as soon as nobody wants the answer; it must not block.
    void whenUnwanted(std::function<void()> stop);

    // The task's side. Whether take() has a result, or all of them; if not, the task waits until it has.
    enum class Until { nextPiece, end };
    bool isReady(Until until) const;
    void wait(Until until, Task::Suspended task);
    // The next piece, absent at the end. Throws a LanguageModelSession::GenerationError or CancellationError.
    std::optional<std::string> take();
    std::optional<std::int64_t> tokens() const;
    // Nobody wants the rest: unless it has ended, the answer fails with a CancellationError.
    void cancel();

private:
    enum class State { growing, ended, failed, cancelled };

    bool isReadyLocked(Until until) const {
        return state_ != State::growing || (until == Until::nextPiece && !pieces_.empty());
    }
    void wake(std::unique_lock<std::mutex> lock);

    mutable std::mutex mutex_;
    std::deque<std::string> pieces_;
    State state_ = State::growing;
    bool wanted_ = true;
    std::string failure_;
    std::optional<std::int64_t> tokens_;
    std::function<void()> stop_;
    Task::Suspended waiting_;
    Until waitingUntil_ = Until::nextPiece;
};

} // namespace platform
