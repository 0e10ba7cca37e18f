#include "platform/linux/x11/pasteboard/thread.h"

#include "platform/linux/x11/pasteboard/batch.h"

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

// For a call that asks only the X server, which takes 0.2 ms unless another program has grabbed the server.
constexpr std::chrono::milliseconds serverLimit = 500ms;

// The thread itself ends calls at their limits; after this much longer the thread itself is held up.
constexpr std::chrono::milliseconds threadDelay = 250ms;

// The same for a call that reads all that an owner has. The thread may be copying an answer of up to 64 MiB
// when the limit passes; where memory is short that was measured to take 0.4 s, and what was read before must
// not be lost over it.
constexpr std::chrono::milliseconds copyDelay = 1000ms;

constexpr std::chrono::milliseconds managerLimit = 1000ms;

constexpr AnswerLimits primaryLimits{2000ms, 2000ms};
constexpr AnswerLimits lookLimits{50ms, 50ms}; // of each of two questions

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
        call<bool>(managerLimit, [](Clipboard& clipboard, auto result) {
            clipboard.saveToManager(managerLimit, [result] { result->set_value(true); });
        });
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        wake();
        // A thread that waits for a grabbed server goes on when its connection is closed.
        if (ended_.get_future().wait_for(serverLimit) != std::future_status::ready)
            shutdown(clipboard_->connection().descriptor(), SHUT_RDWR);
        thread_.join();
    }
}

template <class Result>
std::optional<Result>
Thread::call(std::chrono::milliseconds limit,
             std::function<void(Clipboard&, std::shared_ptr<std::promise<Result>>)> task) {
    auto promise = std::make_shared<std::promise<Result>>();
    auto answer = promise->get_future();
    post([promise = std::move(promise), task = std::move(task)](Clipboard& clipboard) {
        task(clipboard, promise);
    });
    const bool heldUp = done_ < overdue_;
    if (answer.wait_for(heldUp ? 0ms : limit + threadDelay) != std::future_status::ready) {
        overdue_ = posted_;
        return std::nullopt;
    }
    try {
        return answer.get();
    } catch (const std::future_error&) {
        return std::nullopt; // The thread ended first: the X server has gone.
    }
}

std::int64_t Thread::changeCount() {
    if (const auto now = view()) lastCount_ = now->changeCount;
    return lastCount_;
}

std::optional<View> Thread::view() {
    return call<View>(serverLimit,
                      [](Clipboard& clipboard, auto result) { result->set_value(clipboard.view()); });
}

Clipboard::Targets Thread::targets(std::int64_t changeCount, AnswerLimits limits) {
    return call<Clipboard::Targets>(limits.total,
                                    [=](Clipboard& clipboard, auto result) {
                                        clipboard.askTargets(changeCount, limits,
                                                             [result](Clipboard::Targets targets) {
                                                                 result->set_value(std::move(targets));
                                                             });
                                    })
        .value_or(std::nullopt);
}

std::vector<Representation> Thread::read(std::vector<PasteboardType> targets, std::int64_t changeCount,
                                         AnswerLimits limits) {
    using All = std::vector<Representation>;
    return call<All>(limits.total + copyDelay,
                     [=, targets = std::move(targets)](Clipboard& clipboard, auto result) {
                         Batch::ask(clipboard, targets, changeCount, limits,
                                    [result](All all) { result->set_value(std::move(all)); });
                     })
        .value_or(All{});
}

void Thread::clear() {
    call<bool>(serverLimit, [](Clipboard& clipboard, auto result) {
        clipboard.clear();
        result->set_value(true);
    });
}

bool Thread::write(SharedContents contents) {
    return call<bool>(serverLimit,
                      [contents = std::move(contents)](Clipboard& clipboard, auto result) {
                          result->set_value(clipboard.write(contents));
                      })
        .value_or(false);
}

void Thread::copyPrimary(xcb_window_t window) {
    call<bool>(primaryLimits.total, [window](Clipboard& clipboard, auto result) {
        clipboard.copyPrimary(window, primaryLimits, [result] { result->set_value(true); });
    });
}

std::optional<PrimarySelection> Thread::readPrimary(xcb_window_t window) {
    using Selection = std::optional<PrimarySelection>;
    return call<Selection>(2 * lookLimits.total,
                           [window](Clipboard& clipboard, auto result) {
                               clipboard.readPrimary(window, lookLimits, [result](Selection selection) {
                                   result->set_value(std::move(selection));
                               });
                           })
        .value_or(std::nullopt);
}

void Thread::hold(xcb_window_t window, std::function<void()> arrived, Clock::time_point end) {
    call<bool>(serverLimit, [=, arrived = std::move(arrived)](Clipboard& clipboard, auto result) {
        clipboard.owner().hold(window, arrived, end);
        result->set_value(true);
    });
}

void Thread::release() {
    call<bool>(serverLimit, [](Clipboard& clipboard, auto result) {
        clipboard.owner().release();
        clipboard.connection().synchronize();
        result->set_value(true);
    });
}

bool Thread::deliverHeld(std::function<bool()> isRight, Clock::time_point end) {
    return call<bool>(serverLimit,
                      [end, isRight = std::move(isRight)](Clipboard& clipboard, auto result) {
                          const bool right = isRight();
                          if (right)
                              clipboard.owner().release();
                          else
                              clipboard.owner().refuseHeld(end);
                          clipboard.connection().synchronize();
                          result->set_value(right);
                      })
        .value_or(true);
}

void Thread::post(Work task) {
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
    // Fails only when the counter is full, and then the thread is awake anyway.
    [[maybe_unused]] const auto written = ::write(wake_.number(), &one, sizeof one);
}

void Thread::run() {
    while (!clipboard_->connection().lost() && runTasks()) {
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
        Work task;
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
    pollfd sources[] = {{clipboard_->connection().descriptor(), POLLIN, 0}, {wake_.number(), POLLIN, 0}};
    poll(sources, 2, timeout);
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = ::read(wake_.number(), &count, sizeof count);
}

} // namespace platform::selection
