#include "platform/pasteboard.h"

#include "platform/linux/x11/pasteboard/item_contents.h"
#include "platform/linux/x11/pasteboard/text.h"
#include "platform/linux/x11/pasteboard/thread.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform {

namespace {

using selection::Patience;
using selection::Thread;
using namespace std::chrono_literals;

// An owner that says nothing at all for this long has stopped. It is paid once: whoever owes an answer is not
// asked again before it has come.
constexpr auto longestSilence = 400ms;
constexpr Patience typesPatience{longestSilence, longestSilence};
constexpr Patience textPatience{longestSilence, 2000ms};

// Names of plain text, the best first.
const std::array<PasteboardType, 3> textTypes = {"UTF8_STRING", "text/plain;charset=utf-8", "STRING"};

std::optional<Data> find(const selection::Contents& contents, const PasteboardType& type) {
    const auto found = std::ranges::find(contents.representations, type, &selection::Representation::type);
    if (found == contents.representations.end()) return std::nullopt;
    return found->data;
}

std::optional<std::string> textOf(const selection::View& view, const PasteboardType& type) {
    const auto data =
        view.own ? find(*view.own, type) : Thread::shared().data(type, view.changeCount, textPatience);
    if (!data) return std::nullopt;
    return selection::utf8FromData(*data, type);
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
    const auto view = Thread::shared().look();
    if (!view) return std::nullopt;
    if (view->own && !view->own->empty)
        return Items{PasteboardItem(std::make_shared<PasteboardItem::Contents>(*view->own))};
    if (!view->foreign) return Items{};
    auto types = Thread::shared().targets(view->changeCount, typesPatience);
    if (!types) return std::nullopt;
    auto contents = std::make_shared<PasteboardItem::Contents>(std::move(*types), view->changeCount);
    if (contents->types().empty()) return Items{};
    return Items{PasteboardItem(std::move(contents))};
}

std::optional<std::string> Pasteboard::stringForType(const PasteboardType& type) const {
    const auto view = Thread::shared().look();
    if (!view || (view->own ? view->own->empty : !view->foreign)) return std::nullopt;
    if (type != PasteboardTypeString) return textOf(*view, type);
    for (const PasteboardType& name : textTypes)
        if (auto text = textOf(*view, name)) return text;
    return std::nullopt;
}

void Pasteboard::clearContents() { Thread::shared().clear(); }

bool Pasteboard::setString(std::string_view string, const PasteboardType& type) {
    if (type == PasteboardTypeString) return Thread::shared().write(selection::textContents(string));
    selection::Contents contents;
    contents.representations.push_back({type, {{string.begin(), string.end()}, {}}});
    return Thread::shared().write(std::make_shared<const selection::Contents>(std::move(contents)));
}

bool Pasteboard::writeObjects(std::span<const PasteboardItem> items) {
    // This desktop has one thing on the pasteboard: of several items' representations the first of a type
    // counts.
    selection::Contents contents;
    for (const PasteboardItem& item : items)
        for (const PasteboardType& type : item.types())
            if (auto data = item.dataForType(type); data && !find(contents, type))
                contents.representations.push_back({type, std::move(*data)});
    if (!contents.representations.empty())
        return Thread::shared().write(std::make_shared<const selection::Contents>(std::move(contents)));
    clearContents();
    return true;
}

} // namespace platform
