#pragma once

#include "platform/accessibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What browsers say differently from what they mean. Pure; any thread.
namespace platform::at_spi {

// Stands in a text for a child, whose own text is in the child.
inline constexpr std::string_view embeddedChild = "\uFFFC";

std::size_t countOfEmbeddedChildren(std::string_view text);

// `text` without the U+FEFF that Firefox puts behind every character beyond the basic plane.
std::string withoutFillers(std::string text);

// The range that Chromium means by `reported`, whose ends are too low by the number of characters beyond the
// basic plane before each; `caret` is negative when it is elsewhere. Absent when more than one range can be
// meant.
std::optional<CFRange> trueRange(const std::string& text, CFRange reported, std::int64_t caret);

} // namespace platform::at_spi
