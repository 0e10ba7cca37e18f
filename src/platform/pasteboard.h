#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The general pasteboard, which all programs share. Main thread only; every call takes a bounded time, also
// when the program that owns the contents hangs.
namespace platform {

// The desktop's own name of a representation, such as plain text or a picture format.
using PasteboardType = std::string;

// Plain text in UTF-8.
extern const PasteboardType PasteboardTypeString;

// The bytes of one representation. `encoding` is the desktop's note of the form in which their owner
// delivered them, so that the host can put back exactly what it took: the host does not read it, and leaves
// it empty for its own bytes.
struct Data {
    std::vector<std::uint8_t> bytes;
    std::string encoding;

    bool operator==(const Data&) const = default;
};

// One thing on the pasteboard in one or more representations. An item taken from the pasteboard reads its
// data from the owner at each call, until the pasteboard changes; a new item holds what was set. Copies share
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

    // Absent when the owner cannot deliver the data.
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

    // Changes whenever any program replaces the contents; `clearContents` counts too.
    std::int64_t changeCount() const;

    // The items in order; absent when they cannot be read.
    std::optional<std::vector<PasteboardItem>> pasteboardItems() const;

    // The text of the given type, or absent.
    std::optional<std::string> stringForType(const PasteboardType& type) const;

    // Empties the pasteboard for every program.
    void clearContents();

    // Puts a text on the pasteboard. Call `clearContents` before.
    bool setString(std::string_view string, const PasteboardType& type);

    // Puts all items on the pasteboard in one change.
    bool writeObjects(std::span<const PasteboardItem> items);

private:
    Pasteboard() = default;
};

} // namespace platform
