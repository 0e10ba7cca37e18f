#include "platform/linux/x11/pasteboard/item.h"

#include "platform/linux/x11/pasteboard/thread.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;

// Qt 5 takes one second to make a PNG of a large screen, and three for a screenshot in all its formats.
constexpr selection::AnswerLimits dataLimits{2000ms, 3000ms};

// What is read first: text; the one picture format that loses nothing; what only its own program understands;
// and last the other picture formats, which programs can make from the first one.
int rank(const PasteboardType& type) {
    if (type == PasteboardTypeString || type.starts_with("text/")) return 0;
    if (type == "image/png") return 1;
    return type.starts_with("image/") ? 3 : 2;
}

} // namespace

PasteboardItem::Contents::Contents(selection::Contents own) : read_(std::move(own)), settable_(false) {
    for (const auto& representation : read_.representations)
        types_.push_back(representation.target);
}

PasteboardItem::Contents::Contents(const std::vector<PasteboardType>& offered, std::int64_t changeCount)
    : settable_(false), unreadChange_(changeCount) {
    for (const PasteboardType& type : offered)
        if (!type.empty() && !selection::isProtocolTarget(type) &&
            std::ranges::find(types_, type) == types_.end())
            types_.push_back(type);
}

const selection::Representation* PasteboardItem::Contents::find(const PasteboardType& type) {
    if (std::ranges::find(types_, type) == types_.end()) return nullptr;
    if (const auto change = std::exchange(unreadChange_, std::nullopt)) readAll(*change);
    return read_.find(type);
}

void PasteboardItem::Contents::readAll(std::int64_t changeCount) {
    auto targets = types_;
    std::ranges::stable_sort(targets, {}, rank);
    read_.representations = selection::Thread::shared().read(std::move(targets), changeCount, dataLimits);
}

bool PasteboardItem::Contents::setData(Data data, const PasteboardType& type) {
    if (!settable_) return false;
    const auto encoding = selection::encodingOf(data, type);
    selection::Representation given{type, encoding,
                                    std::make_shared<const std::vector<std::uint8_t>>(std::move(data.bytes))};
    const auto same = std::ranges::find(read_.representations, type, &selection::Representation::target);
    if (same != read_.representations.end()) {
        *same = std::move(given);
    } else {
        types_.push_back(type);
        read_.representations.push_back(std::move(given));
    }
    return true;
}

PasteboardItem::PasteboardItem() : PasteboardItem(std::make_shared<Contents>()) {}

PasteboardItem::PasteboardItem(std::shared_ptr<Contents> contents) : contents_(std::move(contents)) {}

std::vector<PasteboardType> PasteboardItem::types() const { return contents_->types(); }

std::optional<Data> PasteboardItem::dataForType(const PasteboardType& type) const {
    const selection::Representation* found = contents_->find(type);
    return found ? std::optional(found->data()) : std::nullopt;
}

bool PasteboardItem::setData(Data data, const PasteboardType& type) {
    return contents_->setData(std::move(data), type);
}

const std::shared_ptr<PasteboardItem::Contents>& PasteboardItem::contents() const { return contents_; }

} // namespace platform
