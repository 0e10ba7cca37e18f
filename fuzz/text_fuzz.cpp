// Text comes from any program on the desktop and need not be UTF-8. The first byte divides the input in two.
#include "text/text.h"

#include <cstdint>
#include <cstdlib>

namespace {

void check(bool condition) {
    if (!condition) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view all(reinterpret_cast<const char*>(data + 1), size - 1);
    const auto left = all.substr(0, data[0]), right = all.substr(left.size());

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
