#include "platform/models/generation/answer.h"

#include "platform/language_model.h"
#include "platform/models/generation/background_executor.h"

#include <utility>

namespace platform {

void Answer::add(std::string piece) {
    std::unique_lock lock(mutex_);
    if (state_ != State::growing || !wanted_) return;
    pieces_.push_back(std::move(piece));
    wake(std::move(lock));
}

void Answer::end(std::optional<std::int64_t> tokens) {
    std::unique_lock lock(mutex_);
    if (state_ != State::growing) return;
    state_ = State::ended;
    tokens_ = tokens;
    wake(std::move(lock));
}

void Answer::fail(std::string sentence) {
    std::unique_lock lock(mutex_);
    if (state_ != State::growing) return;
    state_ = State::failed;
    failure_ = std::move(sentence);
    wake(std::move(lock));
}

bool Answer::isWanted() const {
    const std::lock_guard lock(mutex_);
    return wanted_;
}

void Answer::whenUnwanted(std::function<void()> stop) {
    {
        const std::lock_guard lock(mutex_);
        if (wanted_) {
            stop_ = std::move(stop);
            return;
        }
    }
    stop();
}

bool Answer::isReady(Until until) const {
    const std::lock_guard lock(mutex_);
    return isReadyLocked(until);
}

// Once the task is put down as waiting, it may go on on another thread: nothing of it is touched after that.
void Answer::wait(Until until, Task::Suspended task) {
    {
        const std::lock_guard lock(mutex_);
        if (!isReadyLocked(until)) {
            waiting_ = task;
            waitingUntil_ = until;
            return;
        }
    }
    resumeInBackground(task);
}

std::optional<std::string> Answer::take() {
    const std::lock_guard lock(mutex_);
    if (!pieces_.empty()) {
        auto piece = std::move(pieces_.front());
        pieces_.pop_front();
        return piece;
    }
    if (state_ == State::cancelled) throw CancellationError();
    if (state_ == State::failed) throw LanguageModelSession::GenerationError(failure_);
    return std::nullopt;
}

std::optional<std::int64_t> Answer::tokens() const {
    const std::lock_guard lock(mutex_);
    return tokens_;
}

void Answer::cancel() {
    std::unique_lock lock(mutex_);
    if (state_ == State::growing) state_ = State::cancelled;
    wanted_ = false;
    auto stop = std::exchange(stop_, nullptr);
    wake(std::move(lock));
    if (stop) stop();
}

void Answer::wake(std::unique_lock<std::mutex> lock) {
    if (!isReadyLocked(waitingUntil_)) return;
    const auto task = std::exchange(waiting_, nullptr);
    lock.unlock();
    if (task) resumeInBackground(task);
}

} // namespace platform
