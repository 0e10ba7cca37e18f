#pragma once

#include "platform/pasteboard.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a program offers under the name CLIPBOARD. Plain values; once shared they never change, so any thread
// may read them.
namespace platform::selection {

// One target and the answer to it.
struct Representation {
    PasteboardType type;
    Data data;
};

struct Contents {
    std::vector<Representation> representations;
    // The host's own "nothing": programs find an owner that offers no data, the host finds an empty
    // pasteboard.
    bool empty = false;
};

using SharedContents = std::shared_ptr<const Contents>;

// The type and format (8, 16 or 32 bits a unit) of the property that carries an answer.
struct Encoding {
    std::string type;
    std::uint8_t format = 8;
};

// `Data::encoding` on this desktop is "TYPE/FORMAT", such as "UTF8_STRING/8".
std::string encodingNote(const Encoding& encoding);

// The encoding to answer `target` with; bytes without a readable note travel as bytes of the target's own
// type.
Encoding encodingOf(const Data& data, const PasteboardType& target);

// An owner with nothing on offer but the note that asks history keepers to look away.
SharedContents emptyContents();

// A text under every name that programs ask for.
SharedContents textContents(std::string_view utf8);

// The targets by which owners are asked about themselves or told to act; they are no data.
bool isProtocolTarget(std::string_view target);

} // namespace platform::selection
