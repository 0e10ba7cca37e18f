#include "platform/pasteboard.h"

#include "platform/simulated/world.h"

#include <algorithm>

namespace platform {

using simulated::Item;
using simulated::Representation;
using simulated::World;

const PasteboardType PasteboardTypeString = "text/plain;charset=utf-8";

// The representations of a new item, or the place of an item on the pasteboard.
class PasteboardItem::Contents {
public:
    Item own;
    std::shared_ptr<const std::vector<Item>> source;
    std::size_t index = 0;

    const Item& representations() const { return source ? (*source)[index] : own; }
    // The pasteboard has changed since the item was taken from it.
    bool stale() const { return source && source != World::current().pasteboard.items; }
};

namespace {

// Blocks while the pasteboard's owner produces the data, or, when it hangs, for the whole time limit. False
// when it hangs.
bool waitForOwner(const Representation& representation) {
    World& world = World::current();
    const auto owner = world.pasteboard.owner;
    const bool hangs = owner && owner->accessibility == simulated::Accessibility::hung;
    world.clock.block(hangs ? world.pasteboardTimeout : representation.takes);
    return !hangs;
}

} // namespace

PasteboardItem::PasteboardItem() : PasteboardItem(std::make_shared<Contents>()) {}
PasteboardItem::PasteboardItem(std::shared_ptr<Contents> contents) : contents_(std::move(contents)) {}

const std::shared_ptr<PasteboardItem::Contents>& PasteboardItem::contents() const { return contents_; }

std::vector<PasteboardType> PasteboardItem::types() const {
    std::vector<PasteboardType> types;
    for (const Representation& representation : contents_->representations())
        types.push_back(representation.type);
    return types;
}

std::optional<Data> PasteboardItem::dataForType(const PasteboardType& type) const {
    if (contents_->stale()) return std::nullopt;
    const std::shared_ptr<Contents> kept = contents_;
    const Item& item = kept->representations();
    const auto found = std::ranges::find(item, type, &Representation::type);
    if (found == item.end()) return std::nullopt;
    if (contents_->source && !waitForOwner(*found)) return std::nullopt;
    // The pasteboard may have changed meanwhile.
    return contents_->stale() ? std::nullopt : found->data;
}

bool PasteboardItem::setData(Data data, const PasteboardType& type) {
    if (contents_->source) return false;
    contents_->own.push_back({type, std::move(data)});
    return true;
}

Pasteboard& Pasteboard::generalPasteboard() {
    static Pasteboard pasteboard;
    return pasteboard;
}

std::int64_t Pasteboard::changeCount() const { return World::current().pasteboard.changeCount; }

std::optional<std::vector<PasteboardItem>> Pasteboard::pasteboardItems() const {
    const simulated::PasteboardState& state = World::current().pasteboard;
    if (!state.readable) return std::nullopt;
    std::vector<PasteboardItem> items;
    for (std::size_t i = 0; i < state.items->size(); ++i) {
        auto contents = std::make_shared<PasteboardItem::Contents>();
        contents->source = state.items;
        contents->index = i;
        items.emplace_back(std::move(contents));
    }
    return items;
}

std::optional<std::string> Pasteboard::stringForType(const PasteboardType& type) const {
    const auto items = pasteboardItems();
    for (const PasteboardItem& item : items.value_or(std::vector<PasteboardItem>{})) {
        if (const auto data = item.dataForType(type))
            return std::string(data->bytes.begin(), data->bytes.end());
    }
    return std::nullopt;
}

void Pasteboard::clearContents() { World::current().changePasteboard({}, "Quillmark"); }

bool Pasteboard::setString(std::string_view string, const PasteboardType& type) {
    World::current().changePasteboard({{{type, Data{{string.begin(), string.end()}, {}}}}}, "Quillmark");
    return true;
}

bool Pasteboard::writeObjects(std::span<const PasteboardItem> items) {
    std::vector<Item> written;
    for (const PasteboardItem& item : items) {
        if (item.contents()->source) return false;
        written.push_back(item.contents()->own);
    }
    World::current().changePasteboard(std::move(written), "Quillmark");
    return true;
}

} // namespace platform

namespace simulated {

Representation text(std::string_view string) {
    return {platform::PasteboardTypeString, platform::Data{{string.begin(), string.end()}, {}}};
}

Representation bytes(platform::PasteboardType type, std::vector<std::uint8_t> bytes) {
    return {std::move(type), platform::Data{std::move(bytes), {}}};
}

Representation withoutData(platform::PasteboardType type) { return {std::move(type), std::nullopt}; }

void World::putOnPasteboard(std::vector<Item> items) {
    changePasteboard(std::move(items), "another program");
}
void World::putOnPasteboard(std::vector<Item> items, const Program& by) {
    changePasteboard(std::move(items), by.name);
    pasteboard.owner = by.shared_from_this();
}
void World::putOnPasteboard(std::string_view string) { putOnPasteboard({{text(string)}}); }
void World::emptyPasteboard() { putOnPasteboard(std::vector<Item>{}); }

std::optional<std::string> World::pasteboardText() const {
    for (const Item& item : *pasteboard.items) {
        for (const auto& [type, data, takes] : item) {
            if (type == platform::PasteboardTypeString && data) {
                return std::string(data->bytes.begin(), data->bytes.end());
            }
        }
    }
    return std::nullopt;
}

void World::changePasteboard(std::vector<Item> items, const std::string& by) {
    ++pasteboard.changeCount;
    pasteboard.owner = nullptr;
    pasteboard.items = std::make_shared<const std::vector<Item>>(std::move(items));
    const auto string = pasteboardText();
    const std::string what = string ? '"' + *string + '"'
                             : pasteboard.items->empty()
                                 ? "cleared"
                                 : std::to_string(pasteboard.items->size()) + " items";
    note("pasteboard " + what + " by " + by);
}

} // namespace simulated
