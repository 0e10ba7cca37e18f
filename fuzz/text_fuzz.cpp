// Text comes from any program on the desktop and need not be UTF-8. The first byte divides the input in two.
#include "check.h"
#include "flutter/utf8.h"
#include "text/text.h"
#include "text/utf16.h"

#include <cstring>
#include <string>

namespace {

void repairs(std::string_view text) {
    const auto repaired = flutter::repairedUtf8(text);
    check(flutter::isUtf8(repaired));
    check(flutter::isUtf8(text) == (repaired == text));
    check(flutter::isUtf8(text.substr(0, flutter::validUtf8Prefix(text))));
    std::u16string units(text.size() / sizeof(char16_t), u'\0');
    std::memcpy(units.data(), text.data(), units.size() * sizeof(char16_t));
    check(flutter::isUtf8(text::fromUtf16(units)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto all = asText({data + 1, size - 1});
    const auto left = all.substr(0, data[0]), right = all.substr(left.size());

    repairs(all);
    const auto trimmed = text::trimWhitespaceAndNewlines(all);
    check(text::trimWhitespaceAndNewlines(trimmed) == trimmed);
    check(text::equalStrings(left, right) == text::equalStrings(right, left));
    check(text::equalStrings(all, all));
    text::lowercased(all);

    std::size_t count = 0;
    for (auto rest = left; !rest.empty() && count < 300; ++count) {
        const auto first = text::firstCharacter(rest);
        check(!first.empty());
        rest.remove_prefix(first.size());
    }
    const auto cut = text::firstCharacters(all, 3);
    check(cut.truncated == (cut.text.size() < all.size()));
    return 0;
}
