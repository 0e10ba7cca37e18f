#include "platform/linux/base/pause.h"

#include "platform/main_queue.h"

#include <poll.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace platform {
namespace {

std::thread::id mainThread;
std::vector<const WorkInPauses*> works;

// Until one of the descriptors has something to read, or until `end`.
void waitForWork(TimePoint end) {
    std::vector<pollfd> descriptors;
    for (const WorkInPauses* work : works)
        descriptors.push_back({work->descriptor(), POLLIN, 0});
    const auto left = std::max(end - now(), TimePoint::duration::zero());
    const timespec time{std::chrono::floor<std::chrono::seconds>(left).count(),
                        (left % std::chrono::seconds(1)).count()};
    ppoll(descriptors.data(), descriptors.size(), &time, nullptr);
}

} // namespace

WorkInPauses::WorkInPauses(int descriptor, std::function<void()> work)
    : descriptor_(descriptor), work_(std::move(work)) {
    mainThread = std::this_thread::get_id();
    works.push_back(this);
}

WorkInPauses::~WorkInPauses() { works.erase(std::ranges::find(works, this)); }

void usleep(std::uint32_t microseconds) {
    const std::chrono::microseconds pause(microseconds);
    if (std::this_thread::get_id() != mainThread || works.empty()) return std::this_thread::sleep_for(pause);
    const TimePoint end = now() + pause;
    do {
        for (const WorkInPauses* work : works)
            work->run();
        waitForWork(end);
    } while (now() < end);
}

} // namespace platform
