#include "text/text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/stringpiece.h>

#include <cstdint>
#include <limits>

namespace text {

std::string lowercased(std::string_view text) {
    if (text.size() > std::numeric_limits<std::int32_t>::max()) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    std::string lower;
    icu::StringByteSink<std::string> sink(&lower);
    icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())),
                              sink, nullptr, status);
    return U_SUCCESS(status) ? lower : std::string(text);
}

} // namespace text
