#include "spelling/spelling.h"

#include "spelling/english_vocabulary.h"
#include "spelling/languages.h"
#include "spelling/text_correction.h"
#include "spelling/users_languages.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>

namespace quillmark {

struct Spelling::Job {
    std::string text;
    Handlers handlers; // called on the owner's thread only
    std::atomic<bool> wanted = true;
    std::atomic<bool> isTaken = true; // the last text that was handed out
};

class Spelling::Worker {
public:
    explicit Worker(std::function<void(std::function<void()>)> async) : async_(std::move(async)) {}

    void start(std::shared_ptr<Job> job) {
        {
            const std::lock_guard lock(mutex_);
            next_ = std::move(job);
        }
        filled_.notify_one();
    }

private:
    using Clock = std::chrono::steady_clock;

    void run(const std::stop_token& stop) {
        std::optional<Languages> languages; // loaded when they are first needed
        for (;;) {
            std::unique_lock lock(mutex_);
            if (!filled_.wait(lock, stop, [&] { return next_ != nullptr; })) return;
            const auto job = std::exchange(next_, nullptr);
            lock.unlock();
            if (!languages) languages.emplace(usersLanguages());
            correct(job, *languages, stop);
        }
    }

    void correct(const std::shared_ptr<Job>& job, Languages& languages, const std::stop_token& stop) {
        constexpr std::chrono::milliseconds pause(16); // a screen shows no more
        TextCorrection correction(job->text, languages);
        std::string text;
        auto last = Clock::now();
        while (job->wanted && !stop.stop_requested()) {
            const auto piece = correction.next();
            if (!piece) return post(job, &Handlers::done, std::move(text));
            text += *piece;
            if (Clock::now() - last < pause || !job->isTaken.exchange(false)) continue;
            post(job, &Handlers::growing, text);
            last = Clock::now();
        }
    }

    void post(const std::shared_ptr<Job>& job, std::function<void(const std::string&)> Handlers::*handler,
              std::string text) const {
        async_([job, handler, text = std::move(text)] {
            if (job->wanted && job->handlers.*handler) (job->handlers.*handler)(text);
            job->isTaken = true;
        });
    }

    std::function<void(std::function<void()>)> async_;
    std::mutex mutex_;
    std::condition_variable_any filled_;
    std::shared_ptr<Job> next_;
    std::jthread thread_{[this](const std::stop_token& stop) { run(stop); }}; // the last: it uses the others
};

bool Spelling::isInstalled() { return EnglishVocabulary::isInstalled(); }

Spelling::Spelling(std::function<void(std::function<void()>)> async)
    : worker_(std::make_unique<Worker>(std::move(async))) {}

Spelling::~Spelling() { cancel(); }

void Spelling::correct(std::string text, Handlers handlers) {
    cancel();
    current_ = std::make_shared<Job>();
    current_->text = std::move(text);
    current_->handlers = std::move(handlers);
    worker_->start(current_);
}

void Spelling::cancel() {
    if (current_) current_->wanted = false;
    current_.reset();
}

} // namespace quillmark
