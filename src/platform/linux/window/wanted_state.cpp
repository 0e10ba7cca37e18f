#include "platform/linux/window/wanted_state.h"

#include "platform/main_queue.h"

#include <chrono>
#include <utility>

namespace platform {
namespace {

using namespace std::chrono_literals;

// Window managers do not say that they refuse. They answer within 20 ms on an idle machine.
constexpr Seconds answerDeadline = 300ms;

} // namespace

WantedState::WantedState(WindowManager windowManager) : windowManager_(std::move(windowManager)) {}

void WantedState::want(bool on) {
    wanted_ = on;
    if (!asked_) ask();
}

void WantedState::withdraw() {
    wanted_.reset();
    asked_.reset();
    request_.reset();
}

void WantedState::ask() {
    asked_ = wanted_;
    request_ = std::make_shared<char>();
    const std::weak_ptr life(request_);
    windowManager_.ask(*asked_);
    // Not at once: all that is wanted in one turn of the main loop is one request.
    MainQueue::async(life, [this] { check(); });
    MainQueue::asyncAfter(answerDeadline, life, [this] { answered(windowManager_.hasGiven(*asked_)); });
}

void WantedState::check() {
    if (asked_ && windowManager_.hasGiven(*asked_)) answered(true);
}

void WantedState::answered(bool given) {
    const bool asked = *asked_;
    asked_.reset();
    request_.reset();
    if (wanted_ != asked) return ask();
    wanted_.reset();
    if (!given && windowManager_.refused) windowManager_.refused(asked);
}

} // namespace platform
