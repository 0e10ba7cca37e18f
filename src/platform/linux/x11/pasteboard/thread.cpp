#include "platform/linux/x11/pasteboard/thread.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <utility>

namespace platform::selection {

namespace {

using namespace std::chrono_literals;

// A call that asks nobody but the X server; 0.2 ms unless another program holds the server.
constexpr std::chrono::milliseconds serverPatience = 500ms;

// The thread keeps the deadlines; this is only for the case that it cannot.
constexpr std::chrono::milliseconds slack = 250ms;

constexpr std::chrono::milliseconds handOverPatience = 1000ms;

} // namespace

Thread& Thread::shared() {
    static Thread thread;
    return thread;
}

Thread::Thread() : clipboard_(Clipboard::open()), wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!clipboard_) return;
    // Signals are for the main thread.
    sigset_t all{}, before{};
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    thread_ = std::thread([this] { run(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_setname_np(thread_.native_handle(), "pasteboard");
}

Thread::~Thread() {
    if (thread_.joinable()) {
        ask<bool>(handOverPatience, [](Clipboard& clipboard, auto result) {
            clipboard.handOver(handOverPatience, [result] { result->set_value(true); });
        });
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        wake();
        // A thread that waits for a held-up server gets out when its connection ends.
        if (ended_.get_future().wait_for(serverPatience) != std::future_status::ready)
            shutdown(clipboard_->descriptor(), SHUT_RDWR);
        thread_.join();
    }
}

template <class Result>
std::optional<Result>
Thread::ask(std::chrono::milliseconds limit,
            std::function<void(Clipboard&, std::shared_ptr<std::promise<Result>>)> task) {
    auto promise = std::make_shared<std::promise<Result>>();
    auto answer = promise->get_future();
    post([promise = std::move(promise), task = std::move(task)](Clipboard& clipboard) {
        task(clipboard, promise);
    });
    const bool heldUp = done_ < missed_;
    if (answer.wait_for(heldUp ? 0ms : limit + slack) != std::future_status::ready) {
        missed_ = posted_;
        return std::nullopt;
    }
    try {
        return answer.get();
    } catch (const std::future_error&) {
        return std::nullopt; // The thread ended first: the X server has gone.
    }
}

std::int64_t Thread::changeCount() {
    if (const auto view = look()) lastCount_ = view->changeCount;
    return lastCount_;
}

std::optional<View> Thread::look() {
    return ask<View>(serverPatience,
                     [](Clipboard& clipboard, auto result) { result->set_value(clipboard.look()); });
}

std::optional<std::vector<PasteboardType>> Thread::targets(std::int64_t changeCount, Patience patience) {
    using Names = std::optional<std::vector<PasteboardType>>;
    return ask<Names>(patience.total,
                      [=](Clipboard& clipboard, auto result) {
                          clipboard.ask(
                              "TARGETS", changeCount, patience, [&clipboard, result](const Answer& answer) {
                                  result->set_value(answer ? Names(clipboard.names(*answer)) : std::nullopt);
                              });
                      })
        .value_or(std::nullopt);
}

std::optional<Data> Thread::data(const PasteboardType& type, std::int64_t changeCount, Patience patience) {
    return ask<std::optional<Data>>(
               patience.total,
               [=](Clipboard& clipboard, auto result) {
                   clipboard.ask(type, changeCount, patience, [&clipboard, result](Answer answer) {
                       if (!answer) return result->set_value(std::nullopt);
                       const std::string name = clipboard.name(answer->type);
                       result->set_value(
                           Data{std::move(answer->bytes), encodingNote({name, answer->format})});
                   });
               })
        .value_or(std::nullopt);
}

void Thread::clear() {
    ask<bool>(serverPatience, [](Clipboard& clipboard, auto result) {
        clipboard.clear();
        result->set_value(true);
    });
}

bool Thread::write(SharedContents contents) {
    return ask<bool>(serverPatience,
                     [contents = std::move(contents)](Clipboard& clipboard, auto result) {
                         result->set_value(clipboard.write(contents));
                     })
        .value_or(false);
}

void Thread::post(Task task) {
    {
        const std::lock_guard lock(mutex_);
        if (ending_ || !clipboard_) return;
        tasks_.push_back(std::move(task));
    }
    ++posted_;
    wake();
}

void Thread::wake() {
    const std::uint64_t one = 1;
    // Can only fail when the count is full, and then the thread is awake.
    [[maybe_unused]] const auto written = ::write(wake_.number(), &one, sizeof one);
}

void Thread::run() {
    while (!clipboard_->lost() && runTasks()) {
        clipboard_->process();
        sleep(clipboard_->deadline());
    }
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        tasks_.clear();
    }
    ended_.set_value();
}

bool Thread::runTasks() {
    for (;;) {
        Task task;
        {
            const std::lock_guard lock(mutex_);
            if (ending_) return false;
            if (tasks_.empty()) return true;
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task(*clipboard_);
        ++done_;
    }
}

void Thread::sleep(std::optional<Clock::time_point> deadline) {
    int timeout = -1;
    if (deadline) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
        timeout = static_cast<int>(std::clamp<std::int64_t>(left, 0, 60'000));
    }
    pollfd sources[] = {{clipboard_->descriptor(), POLLIN, 0}, {wake_.number(), POLLIN, 0}};
    poll(sources, 2, timeout);
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = read(wake_.number(), &count, sizeof count);
}

} // namespace platform::selection
