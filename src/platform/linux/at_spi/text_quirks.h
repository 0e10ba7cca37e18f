#pragma once

#include "platform/accessibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Where programs report texts and offsets wrongly. Pure functions; any thread.
namespace platform::at_spi {

// Stands in a text for an embedded object (a child), which has a text of its own.
inline constexpr std::string_view embeddedObject = "\uFFFC";

std::size_t countOfEmbeddedObjects(std::string_view text);

// Whether a text is nothing but the dots that GTK 4 shows in place of a hidden one.
bool isHidden(std::string_view text);

// `text` without the U+FEFF that Firefox puts behind every character beyond the basic plane.
std::string withoutFillers(std::string text);

// The selected range in `text` when Chromium reports `reported`: each end is too low where characters
// beyond the basic plane stand before it. The caret, which it reports right, is at one end; negative
// when the caret is not in this text. Absent when that leaves more than one range.
std::optional<CFRange> trueRange(const std::string& text, CFRange reported, std::int64_t caret);

} // namespace platform::at_spi
