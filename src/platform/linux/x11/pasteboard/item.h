#pragma once

#include "platform/linux/x11/pasteboard/contents.h"

#include <optional>

namespace platform {

// What an item holds on this desktop. Main thread only.
//
// Programs make their data when asked, which takes up to a second for one picture. So an item of another
// program's is read once, all of it, when its data are first asked for, and in three seconds at most.
class PasteboardItem::Contents {
public:
    // A new item's own.
    Contents() = default;
    // The host's own contents, read back.
    explicit Contents(selection::Contents own);
    // What another program offered at that change of the pasteboard.
    Contents(const std::vector<PasteboardType>& offered, std::int64_t changeCount);

    const std::vector<PasteboardType>& types() const { return types_; }
    // Null when the data cannot be produced.
    const selection::Representation* find(const PasteboardType& type);
    bool setData(Data data, const PasteboardType& type);

private:
    void readAll(std::int64_t changeCount);

    std::vector<PasteboardType> types_;
    selection::Contents read_;
    bool settable_ = true;
    std::optional<std::int64_t> unreadChange_; // the change at which to read; absent once it has been read
};

} // namespace platform
