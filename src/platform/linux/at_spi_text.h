#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi_object.h"

#include <optional>
#include <string>

/// The text of an element that has the Text interface. Nothing is remembered. Main thread only.
namespace platform::at_spi {

/// The whole text.
std::optional<std::string> textOf(Bus& bus, const Object& object, Toolkit toolkit);

/// The selected text; empty when nothing is selected.
std::optional<std::string> selectedTextOf(Bus& bus, const Object& object, Toolkit toolkit);

/// The selected range in the program's own units; the caret's place and length 0 when nothing is selected.
std::optional<CFRange> selectedRangeOf(Bus& bus, const Object& object, Toolkit toolkit);

/// `text` without the U+FEFF that Firefox puts behind every character beyond the basic plane.
std::string withoutFillers(std::string text);

/// The range that Chromium means by `reported`, whose ends are too low by the number of characters beyond the
/// basic plane before each. Absent when `text` and `caret` leave more than one possibility.
std::optional<CFRange> trueRange(const std::string& text, CFRange reported, std::int64_t caret);

} // namespace platform::at_spi
