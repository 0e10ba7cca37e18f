#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The general pasteboard, shared with every program. Main thread only; every call takes a bounded time, also
// when the program that owns the contents hangs.
namespace platform {

// The desktop's own name of a representation, such as plain text or a picture format.
using PasteboardType = std::string;

// Plain text in UTF-8.
extern const PasteboardType PasteboardTypeString;

// One representation's bytes. `encoding` is the desktop's own note of how their owner delivered them, kept so
// that a copy can be given back exactly; the host passes it on unread, and leaves it empty for bytes of its
// own.
struct Data {
    std::vector<std::uint8_t> bytes;
    std::string encoding;

    bool operator==(const Data&) const = default;
};

// One thing on the pasteboard in one or more representations. An item taken from the pasteboard reads its
// data from the owner on demand, until the pasteboard changes; a new item holds what was set. Copies share
// their contents.
class PasteboardItem {
public:
    // Where an item's data comes from; each desktop completes it.
    class Contents;

    // A new, empty item.
    PasteboardItem();
    explicit PasteboardItem(std::shared_ptr<Contents> contents);

    // The types on offer, in the owner's order.
    std::vector<PasteboardType> types() const;

    // Absent when the data cannot be produced.
    std::optional<Data> dataForType(const PasteboardType& type) const;

    // Adds a representation at the end of a new item. False when the item came from the pasteboard.
    bool setData(Data data, const PasteboardType& type);

    const std::shared_ptr<Contents>& contents() const;

private:
    std::shared_ptr<Contents> contents_;
};

class Pasteboard {
public:
    static Pasteboard& generalPasteboard();

    // Changes whenever the contents are replaced, by anyone, `clearContents` included.
    std::int64_t changeCount() const;

    // The items in order; absent when they cannot be had.
    std::optional<std::vector<PasteboardItem>> pasteboardItems() const;

    // The text of the given type, or absent.
    std::optional<std::string> stringForType(const PasteboardType& type) const;

    // Empties the pasteboard for every program.
    void clearContents();

    // Puts a text on the pasteboard, usually after `clearContents`.
    bool setString(std::string_view string, const PasteboardType& type);

    // Puts all items on the pasteboard in one change.
    bool writeObjects(std::span<const PasteboardItem> items);

private:
    Pasteboard() = default;
};

} // namespace platform
