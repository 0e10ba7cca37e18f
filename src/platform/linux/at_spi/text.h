#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi/object.h"

#include <cstdint>
#include <optional>
#include <string>

// The text of an object that has the Text interface, as the object gives it: U+FFFC stands for each embedded
// object. Nothing is remembered. Main thread only.
namespace platform::at_spi {

Call textBetween(const Object& object, std::int64_t start, std::int64_t end);
Call allText(const Object& object);

// The whole text.
std::optional<std::string> textOf(Bus& bus, const Object& object, Toolkit toolkit);

struct SelectedText {
    std::string text;
    std::int64_t start = 0; // in the program's own units
};

// The selected text; empty when nothing is selected. Absent also when it is unclear where the selection is.
std::optional<SelectedText> selectedTextOf(Bus& bus, const Object& object, Toolkit toolkit);

// The selected range in the program's own units; the caret's place and length 0 when nothing is selected.
std::optional<CFRange> selectedRangeOf(Bus& bus, const Object& object, Toolkit toolkit);

} // namespace platform::at_spi
