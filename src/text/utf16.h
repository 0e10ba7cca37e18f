// UTF-16 as some interfaces of the desktop use it. Plain functions, usable on any thread.
#pragma once

#include <string>
#include <string_view>

namespace text {

// The same text in UTF-8. An unpaired surrogate becomes U+FFFD.
std::string fromUtf16(std::u16string_view units);

} // namespace text
