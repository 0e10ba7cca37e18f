#pragma once

#include "platform/linux/x11/pasteboard/clipboard.h"

namespace platform::selection {

// Asks CLIPBOARD's owner for many targets, the first ones first. A few requests are under way at a time: a
// target that is never delivered then delays no other, and an owner that is given up has only a few left to
// answer. On the clipboard's thread; keeps itself alive until `done` is called.
class Batch : public std::enable_shared_from_this<Batch> {
public:
    // What came in time, in the order asked for.
    using Done = std::function<void(std::vector<Representation>)>;

    // All of it belongs to the contents at that change. `limits.total` is for all targets together.
    static void ask(Clipboard& clipboard, std::vector<PasteboardType> targets, std::int64_t changeCount,
                    AnswerLimits limits, Done done);

private:
    Batch(Clipboard& clipboard, std::vector<PasteboardType> targets, std::int64_t changeCount,
          AnswerLimits limits, Done done);
    void askNext();
    void arrived(std::size_t index, std::optional<Property> value);

    Clipboard& clipboard_;
    std::vector<PasteboardType> targets_;
    std::int64_t changeCount_;
    std::chrono::milliseconds silence_;
    Clock::time_point end_;
    Done done_;
    std::vector<std::optional<Representation>> values_;
    std::size_t next_ = 0;
    std::size_t underWay_ = 0;
    std::size_t bytes_ = 0;
};

} // namespace platform::selection
