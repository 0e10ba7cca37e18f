#pragma once

#include "platform/linux/base/file_descriptor.h"
#include "platform/linux/x11/pasteboard/clipboard.h"

#include <atomic>
#include <deque>
#include <future>
#include <mutex>
#include <thread>

namespace platform::selection {

// Runs the clipboard on a thread of its own, so that other programs can paste while the main thread sleeps
// or waits. The calls are for the main thread; each takes a bounded time, also when the X server itself is
// held up by another program, and answers absent or false then. Started at first use; at the program's end
// it offers the contents to the clipboard manager.
class Thread {
public:
    static Thread& shared();
    ~Thread();
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    std::int64_t changeCount();
    std::optional<View> look();
    std::optional<std::vector<PasteboardType>> targets(std::int64_t changeCount, Patience patience);
    std::optional<Data> data(const PasteboardType& type, std::int64_t changeCount, Patience patience);
    void clear();
    bool write(SharedContents contents);

private:
    Thread();
    using Task = std::function<void(Clipboard&)>;
    template <class Result>
    std::optional<Result> ask(std::chrono::milliseconds limit,
                              std::function<void(Clipboard&, std::shared_ptr<std::promise<Result>>)> task);
    void post(Task task);
    void wake();
    void run();
    bool runTasks();
    void sleep(std::optional<Clock::time_point> deadline);

    std::unique_ptr<Clipboard> clipboard_;
    FileDescriptor wake_;
    std::int64_t lastCount_ = 0;
    std::uint64_t posted_ = 0;
    // The call that gave up waiting for the thread to get to it.
    std::uint64_t missed_ = 0;
    std::atomic<std::uint64_t> done_ = 0;
    std::mutex mutex_;
    std::deque<Task> tasks_;
    bool ending_ = false;
    std::promise<void> ended_;
    std::thread thread_;
};

} // namespace platform::selection
