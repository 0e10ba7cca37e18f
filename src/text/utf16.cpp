#include "text/utf16.h"

#include <unicode/unistr.h>

namespace text {

std::string fromUtf16(std::u16string_view units) {
    std::string utf8;
    icu::UnicodeString{false, units.data(), static_cast<std::int32_t>(units.size())}.toUTF8String(utf8);
    return utf8;
}

} // namespace text
