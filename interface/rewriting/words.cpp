#include "rewriting/words.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <algorithm>
#include <memory>

namespace quillmark {

namespace {

struct Close {
    void operator()(UText* text) const { utext_close(text); }
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};

bool isBlank(std::string_view piece) {
    return std::all_of(piece.begin(), piece.end(),
                       [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); });
}

} // namespace

std::size_t characters(std::string_view text) {
    constexpr auto startsCharacter = [](char c) { return (c & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

std::vector<Word> wordsOf(std::string_view text) {
    std::vector<Word> words;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UText, Close> source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    const std::unique_ptr<UBreakIterator, Close> breaks(ubrk_open(UBRK_WORD, "", nullptr, 0, &status));
    if (U_FAILURE(status)) return words;
    ubrk_setUText(breaks.get(), source.get(), &status);

    std::size_t at = 0, position = 0;
    for (auto next = ubrk_next(breaks.get()); next != UBRK_DONE; next = ubrk_next(breaks.get())) {
        const auto piece = text.substr(at, static_cast<std::size_t>(next) - at);
        const auto end = position + characters(piece);
        if (!isBlank(piece)) words.push_back({piece, position, end});
        at = static_cast<std::size_t>(next);
        position = end;
    }
    return words;
}

} // namespace quillmark
