#pragma once

#include "platform/models/http/transfer.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <semaphore>
#include <unordered_map>
#include <vector>

namespace platform {

// Carries out any number of transfers on one thread, until it is halted; the object must outlive all others
// that use it: make it a NeverDestroyed. Any thread.
class TransferLoop {
public:
    TransferLoop();
    TransferLoop(const TransferLoop&) = delete;
    TransferLoop& operator=(const TransferLoop&) = delete;

    // A number to stop it with.
    std::uint64_t start(HttpRequest request, std::shared_ptr<HttpReceiver> receiver);
    // Closes its connection; nothing more is reported. One that is over already is left alone.
    void stop(std::uint64_t number);
    // For the end of the program: once it returns, the thread has left libcurl for good. Should that take
    // longer than half a second, it returns nevertheless. Once only, and not on the loop's own thread.
    void halt();

private:
    struct Order {
        std::uint64_t number = 0;
        HttpRequest request;
        std::shared_ptr<HttpReceiver> receiver; // absent: to be stopped
    };

    void run();
    void takeOrders();
    void takeResults();
    void timeOut();
    int millisecondsToWait() const;
    void end(std::uint64_t number);

    CURLM* multi_;
    std::unordered_map<std::uint64_t, std::unique_ptr<HttpTransfer>> transfers_; // the loop's thread only
    std::mutex mutex_;
    std::vector<Order> orders_;
    std::uint64_t lastNumber_ = 0;
    std::atomic<bool> halting_ = false;
    std::binary_semaphore halted_{0};
};

} // namespace platform
