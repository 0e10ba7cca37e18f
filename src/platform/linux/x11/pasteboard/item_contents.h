#pragma once

#include "platform/linux/x11/pasteboard/contents.h"

#include <chrono>
#include <map>

namespace platform {

// An item's contents on this desktop: a new item's own, or those that a program offered at one change of the
// pasteboard. Main thread only.
//
// Reading costs: a program makes each representation when asked, and one picture in all formats takes up to
// three seconds. So all reading from one item has a budget of that much, an owner silent for two seconds is
// not asked further, and whatever cannot be made again from the rest is read first, whichever type is asked
// for.
class PasteboardItem::Contents {
public:
    Contents() = default;
    // The host's own contents, read back.
    explicit Contents(const selection::Contents& own);
    // Another program's.
    Contents(std::vector<PasteboardType> types, std::int64_t changeCount);

    std::vector<PasteboardType> types() const;
    std::optional<Data> dataForType(const PasteboardType& type);
    bool setData(Data data, const PasteboardType& type);

private:
    const std::optional<Data>& fetch(const PasteboardType& type);

    std::vector<PasteboardType> types_;
    std::map<PasteboardType, std::optional<Data>> data_;
    bool taken_ = false;
    std::int64_t changeCount_ = 0;
    std::chrono::nanoseconds budget_ = std::chrono::seconds(3);
};

} // namespace platform
