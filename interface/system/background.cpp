#include "system/background.h"

#include <utility>

namespace quillmark {

Background::Background() {
    finished_.connect([this] { finish(); });
    thread_ = std::thread([this] { work(); });
}

Background::~Background() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void Background::run(Job job) {
    {
        const std::lock_guard lock(mutex_);
        next_ = std::move(job);
    }
    changed_.notify_one();
}

void Background::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || next_; });
        if (ending_) return;
        const auto job = std::exchange(next_, {});
        lock.unlock();
        auto result = job();
        lock.lock();
        result_ = std::move(result);
        finished_.emit();
    }
}

void Background::finish() {
    std::unique_lock lock(mutex_);
    const auto result = std::exchange(result_, {});
    lock.unlock();
    if (result) result();
}

} // namespace quillmark
