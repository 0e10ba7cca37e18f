#pragma once

#include "platform/pasteboard.h"

#include <string>
#include <string_view>

// Texts as programs deliver them, and UTF-8 between them. Pure functions.
namespace platform::selection {

// Latin-1, the encoding of the type STRING; characters it lacks become question marks.
std::string latin1FromUtf8(std::string_view utf8);

// Well-formed UTF-8 of a delivered text, whatever its owner put in it.
std::string utf8FromData(const Data& data, const PasteboardType& target);

} // namespace platform::selection
