#include "platform/main_queue.h"

#include "platform/simulated/world.h"

namespace platform {

void MainQueue::async(std::function<void()> work) {
    simulated::World::current().clock.async(std::move(work));
}

void MainQueue::asyncAfter(Seconds delay, std::function<void()> work) {
    simulated::World::current().clock.asyncAfter(delay, std::move(work));
}

TimePoint now() { return simulated::World::current().clock.now(); }

void usleep(std::uint32_t microseconds) {
    simulated::World::current().clock.block(std::chrono::microseconds{microseconds});
}

} // namespace platform
