#pragma once

#include "platform/linux/at_spi/object.h"

namespace platform::at_spi {

// Whether the selection in a paragraph of LibreOffice Writer is all that is selected in the document. Each
// paragraph is an object of its own there, and shows only its own part of a selection. False also when that
// cannot be told. Main thread only.
bool selectionStaysIn(Bus& bus, const Object& paragraph);

} // namespace platform::at_spi
