#pragma once

#include "platform/pasteboard.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// What a program offers on CLIPBOARD. Plain values; once shared they never change, so any thread may read
// them.
namespace platform::selection {

// Shared between everything that offers, sends or keeps the same data.
using SharedBytes = std::shared_ptr<const std::vector<std::uint8_t>>;

// The type and format (8, 16 or 32 bits a unit) of the property that carries an answer.
struct Encoding {
    std::string type;
    std::uint8_t format = 8;
};

// `Data::encoding` on this desktop is "TYPE/FORMAT", such as "UTF8_STRING/8".
std::string encodingNote(const Encoding& encoding);

// The encoding in which to deliver `data` for `target`. Without a note that can be read, the data are bytes
// of the type that the target names.
Encoding encodingOf(const Data& data, const PasteboardType& target);

// One target and what is delivered for it.
struct Representation {
    PasteboardType target;
    Encoding encoding;
    SharedBytes bytes;
    // The bytes are UTF-8 and are converted to Latin-1 for each delivery. Few programs ask for it, and
    // keeping the converted text would take as much memory again.
    bool convertToLatin1 = false;

    SharedBytes delivered() const;
    Data data() const;
};

struct Contents {
    std::vector<Representation> representations;
    // The host's own empty pasteboard: other programs find an owner that has no data for them.
    bool empty = false;

    // Null when there is none for that target.
    const Representation* find(const PasteboardType& target) const;
};

using SharedContents = std::shared_ptr<const Contents>;

// An owner that offers nothing except a note for clipboard managers to leave it alone.
SharedContents emptyContents();

// A text under every name that programs ask for.
SharedContents textContents(std::string_view utf8);

// One representation alone.
SharedContents singleContents(Representation representation);

// True for a target by which an owner is asked about its contents, or told to do something; it has no data.
bool isProtocolTarget(std::string_view target);

} // namespace platform::selection
