#include "platform/models/generation/answer.h"

#include "platform/language_model.h"
#include "platform/models/generation/background_executor.h"

#include <stdexcept>
#include <utility>

namespace platform {

void Answer::add(std::string_view text) {
    std::unique_lock lock(mutex_);
    if (state_ != State::growing || !wanted_) return;
    text_ += text;
    hasNewText_ = true;
    const auto task = takeReadyTask();
    lock.unlock();
    if (task) task.resume();
}

void Answer::startOver() {
    std::unique_lock lock(mutex_);
    hasNewText_ = hasNewText_ || !text_.empty(); // that nothing is left
    text_.clear();
    wake(std::move(lock));
}

void Answer::end(std::optional<std::int64_t> tokens) { finish(State::ended, {}, tokens); }

void Answer::refuse(std::string sentence) { finish(State::refused, std::move(sentence)); }

void Answer::fail(std::string sentence) { finish(State::failed, std::move(sentence)); }

void Answer::finish(State state, std::string sentence, std::optional<std::int64_t> tokens) {
    std::unique_lock lock(mutex_);
    if (state_ != State::growing) return;
    state_ = state;
    sentence_ = std::move(sentence);
    tokens_ = tokens;
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

bool Answer::isReadyLocked(Until until) const {
    if (state_ == State::cancelled) return true;
    if (until == Until::newText && hasNewText_) return hasTurn_;
    return state_ != State::growing;
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
    if (state_ == State::cancelled) throw CancellationError();
    if (std::exchange(hasNewText_, false)) {
        hasTurn_ = false;
        return text_;
    }
    throwIfWithoutEnd();
    return std::nullopt;
}

std::string Answer::text() const {
    const std::lock_guard lock(mutex_);
    throwIfWithoutEnd();
    return text_;
}

void Answer::throwIfWithoutEnd() const {
    if (state_ == State::cancelled) throw CancellationError();
    if (state_ == State::refused) throw LanguageModelSession::GenerationError(sentence_);
    if (state_ == State::failed) throw std::runtime_error(sentence_);
}

void Answer::giveTurn() {
    std::unique_lock lock(mutex_);
    hasTurn_ = true;
    wake(std::move(lock));
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
    const auto task = takeReadyTask();
    lock.unlock();
    if (task) resumeInBackground(task);
}

Task::Suspended Answer::takeReadyTask() {
    return isReadyLocked(waitingUntil_) ? std::exchange(waiting_, nullptr) : nullptr;
}

} // namespace platform
