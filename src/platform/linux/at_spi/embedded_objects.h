#pragma once

#include "platform/linux/at_spi/focused_object.h"
#include "platform/linux/at_spi/text.h"

#include <optional>
#include <string>

// The text of an element together with the texts of the objects embedded in it. In browsers an editable block
// has one for each paragraph, list and link. Main thread only.
namespace platform::at_spi {

// The whole text, a line for each paragraph. Of an element that cannot be edited (a web page) only its own
// text, without that of embedded objects. Absent when any part of it cannot be read, such as a picture.
std::optional<std::string> expandedText(Bus& bus, const FocusedObject& element, const TextReading& reading);

// The selected text, in the same way; empty when nothing is selected.
std::optional<std::string> expandedSelection(Bus& bus, const FocusedObject& element,
                                             const TextReading& reading);

} // namespace platform::at_spi
