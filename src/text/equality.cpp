#include "text/text.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace text {
namespace {

// In bytes. Large enough for the cost of the calls not to matter; small enough to find a difference soon, and
// to keep the sorting of combining marks cheap, whose time is quadratic in their number, when a text is
// nothing else.
constexpr std::size_t pieceSize = 1024;

const icu::Normalizer2* composition() {
    UErrorCode status = U_ZERO_ERROR;
    return icu::Normalizer2::getNFCInstance(status);
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// Whether the composed form of what follows `index` does not depend on what stands before it.
bool isBoundary(const icu::Normalizer2& normalizer, std::string_view text, std::size_t index) {
    if (index >= text.size()) return true;
    if (isContinuation(text[index])) return false;
    const std::string_view window = text.substr(index, U8_MAX_LENGTH);
    std::int32_t at = 0;
    UChar32 character = U_SENTINEL;
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(window.data()), at,
            static_cast<std::int32_t>(window.size()), character);
    return character < 0 || normalizer.hasBoundaryBefore(character);
}

// The composed form (NFC) of a text, byte by byte. Composes one piece at a time, when its first byte is read.
class ComposedBytes {
public:
    ComposedBytes(const icu::Normalizer2& normalizer, std::string_view text)
        : normalizer_(normalizer), rest_(text) {}

    // The next byte, or -1 at the end.
    int next() {
        if (at_ == piece_.size() && !refill()) return -1;
        return static_cast<unsigned char>(piece_[at_++]);
    }

private:
    bool refill() {
        if (rest_.empty()) return false;
        const std::string_view source = rest_.substr(0, pieceEnd());
        rest_.remove_prefix(source.size());
        piece_.clear();
        at_ = 0;
        UErrorCode status = U_ZERO_ERROR;
        icu::StringByteSink<std::string> sink(&piece_);
        normalizer_.normalizeUTF8(0,
                                  icu::StringPiece(source.data(), static_cast<std::int32_t>(source.size())),
                                  sink, nullptr, status);
        if (U_FAILURE(status) || piece_.empty()) piece_ = source;
        return true;
    }

    std::size_t pieceEnd() const {
        std::size_t end = std::min(pieceSize, rest_.size());
        const std::size_t limit = end + pieceSize;
        while (end < limit && !isBoundary(normalizer_, rest_, end))
            ++end;
        return end;
    }

    const icu::Normalizer2& normalizer_;
    std::string_view rest_;
    std::string piece_;
    std::size_t at_ = 0;
};

} // namespace

bool equalStrings(std::string_view a, std::string_view b) {
    if (a == b) return true;
    const auto common = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    auto start = static_cast<std::size_t>(common);
    const auto* normalizer = composition();
    if (!normalizer) return false;

    // The equal bytes at the beginning need no composing, up to the last place where both texts may be cut.
    while (start > 0 && !(isBoundary(*normalizer, a, start) && isBoundary(*normalizer, b, start)))
        --start;
    ComposedBytes left(*normalizer, a.substr(start)), right(*normalizer, b.substr(start));
    for (;;) {
        const int byte = left.next();
        if (byte != right.next()) return false;
        if (byte < 0) return true;
    }
}

} // namespace text
