#include "platform/models/http/transfer_loop.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace platform {

TransferLoop::TransferLoop() : multi_(curl_multi_init()) {
    std::thread([this] { run(); }).detach();
}

std::uint64_t TransferLoop::start(HttpRequest request, std::shared_ptr<HttpReceiver> receiver) {
    Order order{0, std::move(request), std::move(receiver)};
    std::unique_lock lock(mutex_);
    const auto number = order.number = ++lastNumber_;
    orders_.push_back(std::move(order));
    lock.unlock();
    curl_multi_wakeup(multi_);
    return number;
}

void TransferLoop::stop(std::uint64_t number) {
    {
        const std::lock_guard lock(mutex_);
        orders_.push_back({number, {}, nullptr});
    }
    curl_multi_wakeup(multi_);
}

void TransferLoop::run() {
    while (!halting_) {
        takeOrders();
        int running = 0;
        curl_multi_perform(multi_, &running);
        takeResults();
        timeOut();
        curl_multi_poll(multi_, nullptr, 0, millisecondsToWait(), nullptr);
    }
    halted_.release();
}

void TransferLoop::halt() {
    constexpr std::chrono::milliseconds longest{500};
    halting_ = true;
    curl_multi_wakeup(multi_);
    static_cast<void>(halted_.try_acquire_for(longest));
}

void TransferLoop::takeOrders() {
    std::unique_lock lock(mutex_);
    auto orders = std::exchange(orders_, {});
    lock.unlock();
    for (auto& order : orders) {
        if (!order.receiver) {
            end(order.number);
            continue;
        }
        auto transfer =
            std::make_unique<HttpTransfer>(order.number, std::move(order.request), std::move(order.receiver));
        curl_multi_add_handle(multi_, transfer->handle());
        transfers_.emplace(order.number, std::move(transfer));
    }
}

void TransferLoop::takeResults() {
    int left = 0;
    while (const auto* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        HttpTransfer* transfer = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        transfer->finish(message->data.result);
        end(transfer->number());
    }
}

void TransferLoop::timeOut() {
    const auto now = HttpTransfer::Clock::now();
    std::vector<std::uint64_t> late;
    for (const auto& [number, transfer] : transfers_)
        if (transfer->deadline() <= now) late.push_back(number);
    for (const auto number : late) {
        transfers_.at(number)->timeOut();
        end(number);
    }
}

int TransferLoop::millisecondsToWait() const {
    constexpr std::chrono::milliseconds longest = std::chrono::minutes(1); // an order ends the wait anyway
    auto wait = longest;
    const auto now = HttpTransfer::Clock::now();
    for (const auto& [number, transfer] : transfers_)
        wait = std::min(wait, std::chrono::ceil<std::chrono::milliseconds>(transfer->deadline() - now));
    return static_cast<int>(std::max(wait.count(), std::chrono::milliseconds::rep{0}));
}

void TransferLoop::end(std::uint64_t number) {
    const auto transfer = transfers_.find(number);
    if (transfer == transfers_.end()) return;
    curl_multi_remove_handle(multi_, transfer->second->handle());
    transfers_.erase(transfer);
}

} // namespace platform
