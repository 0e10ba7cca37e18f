// Conversion from UTF-16, which some interfaces of the desktop use. Plain functions; any thread.
#pragma once

#include <string>
#include <string_view>

namespace text {

// The same text in UTF-8. An unpaired surrogate becomes U+FFFD.
std::string fromUtf16(std::u16string_view units);

} // namespace text
