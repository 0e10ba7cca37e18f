#include "text/text.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <memory>

namespace text {
namespace {

// Creating an iterator loads its rules and takes milliseconds; cloning one takes less than a microsecond.
std::unique_ptr<icu::BreakIterator> characterIterator() {
    static const std::unique_ptr<const icu::BreakIterator> prototype = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<const icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    return std::unique_ptr<icu::BreakIterator>(prototype ? prototype->clone() : nullptr);
}

// The end of the first `count` characters, or of the text when it has fewer.
std::size_t endOfCharacters(std::string_view text, std::size_t count) {
    UErrorCode status = U_ZERO_ERROR;
    UText utf8 = UTEXT_INITIALIZER;
    utext_openUTF8(&utf8, text.data(), static_cast<std::int64_t>(text.size()), &status);
    const auto characters = characterIterator();
    if (characters) characters->setText(&utf8, status);

    std::size_t end = characters && U_SUCCESS(status) ? 0 : text.size();
    for (std::size_t done = 0; done < count && end < text.size(); ++done) {
        const std::int32_t next = characters->next();
        end = next == icu::BreakIterator::DONE ? text.size() : static_cast<std::size_t>(next);
    }
    utext_close(&utf8);
    return end;
}

} // namespace

Cut firstCharacters(std::string_view text, std::size_t count) {
    // No character is shorter than a byte.
    if (text.size() <= count) return {text, false};
    // The iterator counts bytes in 32 bits.
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    const std::size_t end = endOfCharacters(text.substr(0, mostBytes), count);
    return {text.substr(0, end), end < text.size()};
}

std::string_view firstCharacter(std::string_view text) { return firstCharacters(text, 1).text; }

} // namespace text
