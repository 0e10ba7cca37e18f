#pragma once

#include "platform/linux/base/file_descriptor.h"
#include "platform/linux/x11/pasteboard/clipboard.h"

#include <atomic>
#include <deque>
#include <future>
#include <mutex>
#include <thread>

namespace platform::selection {

// Runs the clipboard on a thread of its own, so that other programs can paste while the main thread sleeps or
// waits. The calls are for the main thread. Each takes a bounded time, even while another program has grabbed
// the X server, and gives nothing or false then. Started at first use; when the program ends, it gives the
// contents to the clipboard manager.
class Thread {
public:
    static Thread& shared();
    ~Thread();
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    std::int64_t changeCount();
    std::optional<View> view();
    // What the owner offered at that change; absent when it does not answer or the pasteboard has changed.
    Clipboard::Targets targets(std::int64_t changeCount, AnswerLimits limits);
    // Of these targets, what the owner delivers, in this order.
    std::vector<Representation> read(std::vector<PasteboardType> targets, std::int64_t changeCount,
                                     AnswerLimits limits);
    void clear();
    bool write(SharedContents contents);
    void copyPrimary(xcb_window_t window);
    std::optional<PrimarySelection> readPrimary(xcb_window_t window);

    // As Owner has them. `arrived` is called on the pasteboard's thread.
    void hold(xcb_window_t window, std::function<void()> arrived, Clock::time_point end);
    void release();
    // Releases if `isRight`, asked on the pasteboard's thread, else refuses until `end`. False when it
    // refused.
    bool deliverHeld(std::function<bool()> isRight, Clock::time_point end);

private:
    Thread();
    using Work = std::function<void(Clipboard&)>;
    template <class Result>
    std::optional<Result> call(std::chrono::milliseconds limit,
                               std::function<void(Clipboard&, std::shared_ptr<std::promise<Result>>)> task);
    void post(Work task);
    void wake();
    void run();
    bool runTasks();
    void sleep(std::optional<Clock::time_point> deadline);

    std::unique_ptr<Clipboard> clipboard_;
    FileDescriptor wake_;
    std::int64_t lastCount_ = 0;
    std::uint64_t posted_ = 0;  // tasks so far
    std::uint64_t overdue_ = 0; // the number of the last task that took too long
    std::atomic<std::uint64_t> done_ = 0;
    std::mutex mutex_;
    std::deque<Work> tasks_;
    bool ending_ = false;
    std::promise<void> ended_;
    std::thread thread_;
};

} // namespace platform::selection
