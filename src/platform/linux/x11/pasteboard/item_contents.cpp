#include "platform/linux/x11/pasteboard/item_contents.h"

#include "platform/linux/x11/pasteboard/thread.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

// Qt takes one second to make a PNG of a large screen.
constexpr auto longestSilence = std::chrono::milliseconds(2000);

// What is read first: text; the one picture that loses nothing; what only its own program understands; and at
// last the other picture formats, which any program can make from the first.
int rank(const PasteboardType& type) {
    if (type == PasteboardTypeString || type.starts_with("text/")) return 0;
    if (type == "image/png") return 1;
    return type.starts_with("image/") ? 3 : 2;
}

} // namespace

PasteboardItem::Contents::Contents(const selection::Contents& own) : taken_(true) {
    for (const auto& [type, data] : own.representations) {
        types_.push_back(type);
        data_[type] = data;
    }
}

PasteboardItem::Contents::Contents(std::vector<PasteboardType> types, std::int64_t changeCount)
    : taken_(true), changeCount_(changeCount) {
    for (PasteboardType& type : types)
        if (!type.empty() && !selection::isProtocolTarget(type) &&
            std::ranges::find(types_, type) == types_.end())
            types_.push_back(std::move(type));
}

std::vector<PasteboardType> PasteboardItem::Contents::types() const { return types_; }

std::optional<Data> PasteboardItem::Contents::dataForType(const PasteboardType& type) {
    if (std::ranges::find(types_, type) == types_.end()) return std::nullopt;
    for (int earlier = 0; earlier < rank(type); ++earlier)
        for (const PasteboardType& other : types_)
            if (rank(other) == earlier) fetch(other);
    return fetch(type);
}

const std::optional<Data>& PasteboardItem::Contents::fetch(const PasteboardType& type) {
    const auto known = data_.find(type);
    if (known != data_.end()) return known->second;
    std::optional<Data>& data = data_[type];
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(budget_);
    if (left.count() <= 0) return data;
    const auto start = selection::Clock::now();
    data = selection::Thread::shared().data(type, changeCount_, {std::min(longestSilence, left), left});
    budget_ -= selection::Clock::now() - start;
    return data;
}

bool PasteboardItem::Contents::setData(Data data, const PasteboardType& type) {
    if (taken_) return false;
    if (!data_.contains(type)) types_.push_back(type);
    data_[type] = std::move(data);
    return true;
}

PasteboardItem::PasteboardItem() : PasteboardItem(std::make_shared<Contents>()) {}

PasteboardItem::PasteboardItem(std::shared_ptr<Contents> contents) : contents_(std::move(contents)) {}

std::vector<PasteboardType> PasteboardItem::types() const { return contents_->types(); }

std::optional<Data> PasteboardItem::dataForType(const PasteboardType& type) const {
    return contents_->dataForType(type);
}

bool PasteboardItem::setData(Data data, const PasteboardType& type) {
    return contents_->setData(std::move(data), type);
}

const std::shared_ptr<PasteboardItem::Contents>& PasteboardItem::contents() const { return contents_; }

} // namespace platform
