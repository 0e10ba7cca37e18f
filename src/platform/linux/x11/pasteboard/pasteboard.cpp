#include "platform/pasteboard.h"

#include "platform/linux/x11/pasteboard/item.h"
#include "platform/linux/x11/pasteboard/text.h"
#include "platform/linux/x11/pasteboard/thread.h"

#include <array>
#include <utility>

namespace platform {

namespace {

using selection::AnswerLimits;
using selection::Representation;
using selection::Thread;
using namespace std::chrono_literals;

// An owner that says nothing for that long has stopped. This is waited for once: a silent owner is not asked
// anything before it has answered.
constexpr AnswerLimits targetsLimits{1000ms, 1000ms};

// Slow programs announce a copy and then take their time to deliver it.
constexpr AnswerLimits textLimits{2000ms, 3000ms};

// Names of plain text, the best first.
const std::array<PasteboardType, 3> textTypes = {"UTF8_STRING", "text/plain;charset=utf-8", "STRING"};

std::string utf8(const Representation& representation) {
    return selection::utf8FromDelivered(selection::text(*representation.delivered()),
                                        representation.encoding.type);
}

std::optional<std::string> textOf(const selection::View& view, const PasteboardType& type) {
    if (view.own) {
        const Representation* own = view.own->find(type);
        return own ? std::optional(utf8(*own)) : std::nullopt;
    }
    const auto read = Thread::shared().read({type}, view.changeCount, textLimits);
    return read.empty() ? std::nullopt : std::optional(utf8(read.front()));
}

} // namespace

const PasteboardType PasteboardTypeString = textTypes.front();

Pasteboard& Pasteboard::generalPasteboard() {
    static Pasteboard pasteboard;
    return pasteboard;
}

std::int64_t Pasteboard::changeCount() const { return Thread::shared().changeCount(); }

std::optional<std::vector<PasteboardItem>> Pasteboard::pasteboardItems() const {
    using Items = std::vector<PasteboardItem>;
    const auto view = Thread::shared().view();
    if (!view) return std::nullopt;
    if (view->own && !view->own->empty)
        return Items{PasteboardItem(std::make_shared<PasteboardItem::Contents>(*view->own))};
    if (!view->foreign) return Items{};
    const auto types = Thread::shared().targets(view->changeCount, targetsLimits);
    if (!types) return std::nullopt;
    auto contents = std::make_shared<PasteboardItem::Contents>(*types, view->changeCount);
    if (contents->types().empty()) return Items{};
    return Items{PasteboardItem(std::move(contents))};
}

std::optional<std::string> Pasteboard::stringForType(const PasteboardType& type) const {
    const auto view = Thread::shared().view();
    if (!view || (view->own ? view->own->empty : !view->foreign)) return std::nullopt;
    if (type != PasteboardTypeString) return textOf(*view, type);
    for (const PasteboardType& name : textTypes)
        if (auto text = textOf(*view, name)) return text;
    return std::nullopt;
}

void Pasteboard::clearContents() { Thread::shared().clear(); }

bool Pasteboard::setString(std::string_view string, const PasteboardType& type) {
    if (type == PasteboardTypeString) return Thread::shared().write(selection::textContents(string));
    return Thread::shared().write(selection::singleContents(
        {type, {type, 8}, std::make_shared<const std::vector<std::uint8_t>>(string.begin(), string.end())}));
}

bool Pasteboard::writeObjects(std::span<const PasteboardItem> items) {
    // This desktop has one item on the pasteboard; of several items' representations the first of a type
    // counts.
    selection::Contents contents;
    for (const PasteboardItem& item : items)
        for (const PasteboardType& type : item.types())
            if (const Representation* found = item.contents()->find(type); found && !contents.find(type))
                contents.representations.push_back(*found);
    if (!contents.representations.empty())
        return Thread::shared().write(std::make_shared<const selection::Contents>(std::move(contents)));
    clearContents();
    return true;
}

} // namespace platform
