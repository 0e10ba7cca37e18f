#include "platform/linux/x11/pasteboard/batch.h"

#include <algorithm>
#include <utility>

namespace platform::selection {

namespace {

constexpr std::size_t mostUnderWay = 4;

// All answers together; what comes after that is left out.
constexpr std::size_t mostBytesInAll = 2 * mostBytes;

} // namespace

Batch::Batch(Clipboard& clipboard, std::vector<PasteboardType> targets, std::int64_t changeCount,
             AnswerLimits limits, Done done)
    : clipboard_(clipboard), targets_(std::move(targets)), changeCount_(changeCount),
      silence_(limits.silence), end_(Clock::now() + limits.total), done_(std::move(done)),
      values_(targets_.size()) {}

void Batch::ask(Clipboard& clipboard, std::vector<PasteboardType> targets, std::int64_t changeCount,
                AnswerLimits limits, Done done) {
    const std::shared_ptr<Batch> batch(
        new Batch(clipboard, std::move(targets), changeCount, limits, std::move(done)));
    batch->askNext();
}

void Batch::askNext() {
    const auto left = std::chrono::floor<std::chrono::milliseconds>(end_ - Clock::now());
    if (left.count() <= 0 || bytes_ > mostBytesInAll) next_ = targets_.size();
    while (next_ < targets_.size() && underWay_ < mostUnderWay) {
        const std::size_t index = next_++;
        ++underWay_;
        clipboard_.ask(targets_[index], changeCount_, {std::min(silence_, left), left},
                       [self = shared_from_this(), index](std::optional<Property> value) {
                           self->arrived(index, std::move(value));
                       });
    }
    if (next_ < targets_.size() || underWay_ > 0 || !done_) return;
    std::vector<Representation> all;
    for (auto& value : values_)
        if (value) all.push_back(std::move(*value));
    std::exchange(done_, nullptr)(std::move(all));
}

void Batch::arrived(std::size_t index, std::optional<Property> value) {
    --underWay_;
    if (value) {
        bytes_ += value->bytes.size();
        values_[index] = representation(clipboard_.connection(), targets_[index], std::move(*value));
    }
    askNext();
}

} // namespace platform::selection
