// One thread for what would hold up the main loop. Only the newest job counts: what was asked before and has
// not begun is left out. Main thread only; jobs run on the thread.
#pragma once

#include <glibmm/dispatcher.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace quillmark {

class Background {
public:
    // Returns what is then done on the main thread.
    using Job = std::function<std::function<void()>()>;

    Background();
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    void run(Job job);

private:
    void work();
    void finish();

    Glib::Dispatcher finished_;
    std::mutex mutex_;
    std::condition_variable changed_;
    Job next_;
    std::function<void()> result_;
    bool ending_ = false;
    std::thread thread_;
};

} // namespace quillmark
