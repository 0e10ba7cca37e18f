#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi/object.h"

#include <cstdint>
#include <optional>
#include <string>

// The text of an object that has the Text interface, as the object gives it: U+FFFC stands for each embedded
// object. Offsets are in the program's own units. Main thread only.
namespace platform::at_spi {

// What an object says of its text, all at one moment.
struct TextReading {
    std::optional<std::string> text;
    // Where the selection is, and while nothing is selected where the caret is, with length 0. Absent when
    // that cannot be told.
    std::optional<CFRange> range;
    // Absent when the object does not say whether anything is selected.
    std::optional<bool> hasSelection;
    // The selected part, still to be cleaned, if it was read at the same moment.
    std::optional<std::string> selected;
};

// The selected part is read along with the rest if the selection is where it is `expected`.
TextReading readText(Bus& bus, const Object& object, Toolkit toolkit,
                     std::optional<CFRange> expected = std::nullopt);

// The selected part of the text; empty when nothing is selected.
std::optional<std::string> selectedText(Bus& bus, const Object& object, const TextReading& reading,
                                        Toolkit toolkit);

Call selectionOf(const Object& object);
std::optional<CFRange> rangeIn(const Reply& selection);
// The whole text alone, and a part of it; what the replies hold is still to be cleaned.
Call allText(const Object& object);
Call textBetween(const Object& object, std::int64_t start, std::int64_t end);

} // namespace platform::at_spi
