#include "spelling/text_pieces.h"

#include "spelling/ascii.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

namespace quillmark {
namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr UChar32 typographicApostrophe = 0x2019;

// Making an iterator loads rules and takes milliseconds, cloning one takes less than a microsecond.
std::unique_ptr<icu::BreakIterator> wordIterator() {
    // Never destroyed: the corrector's thread still runs when the program ends.
    static const icu::BreakIterator* const prototype = [] {
        UErrorCode status = U_ZERO_ERROR;
        return icu::BreakIterator::createWordInstance(icu::Locale::getEnglish(), status);
    }();
    return std::unique_ptr<icu::BreakIterator>(prototype ? prototype->clone() : nullptr);
}

// What stands between two blanks and is an address, a path, a number, an option or a name in code.
bool isTechnical(std::string_view chunk) {
    const auto inner = chunk.size() > 2 ? chunk.substr(1, chunk.size() - 2) : std::string_view();
    return chunk.find_first_of("@/\\_0123456789=<>{}|#$%^~`+&") != std::string_view::npos ||
           chunk.starts_with('-') || inner.find('-') != std::string_view::npos ||
           inner.find(':') != std::string_view::npos || chunk.find("()") != std::string_view::npos ||
           std::ranges::count_if(chunk, isUpper) > 1;
}

bool isPlainWord(std::string_view word) {
    if (std::ranges::all_of(word.substr(1), isLower)) return isLower(word.front()) || isUpper(word.front());
    const auto text = icu::UnicodeString::fromUTF8({word.data(), static_cast<std::int32_t>(word.size())});
    for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        const UChar32 letter = text.char32At(at);
        const bool isApostrophe = letter == '\'' || letter == typographicApostrophe;
        if (!isApostrophe && !u_islower(letter) && !(at == 0 && u_isupper(letter))) return false;
    }
    return true;
}

// Code in a text, as Markdown marks it: between two runs of as many backticks; behind a run of three or more
// that nothing closes, all of the rest. Asked for places in rising order, it reads the text once.
class Code {
public:
    explicit Code(std::string_view text) : text_(text) {}

    bool contains(std::size_t at) {
        while (at >= end_ && start_ < text_.size())
            findNext();
        return at >= start_;
    }

private:
    void findNext() {
        constexpr std::size_t fence = 3;
        start_ = std::min(text_.find('`', end_), text_.size());
        const std::size_t length = lengthOfRun(start_);
        end_ = start_ + length;
        const std::size_t closing = findRun(length, end_);
        if (closing < text_.size())
            end_ = closing + length;
        else if (length >= fence)
            end_ = text_.size();
    }

    // The end of the text when there is none.
    std::size_t findRun(std::size_t length, std::size_t from) const {
        std::size_t at = from;
        while ((at = std::min(text_.find('`', at), text_.size())) < text_.size()) {
            const std::size_t found = lengthOfRun(at);
            if (found == length) break;
            at += found;
        }
        return at;
    }

    std::size_t lengthOfRun(std::size_t at) const {
        return std::min(text_.find_first_not_of('`', at), text_.size()) - at;
    }

    std::string_view text_;
    std::size_t start_ = 0, end_ = 0; // of the piece of code that was found last
};

// The chunk around a place in the text. Asked for places in rising order, it reads the text once.
class Chunks {
public:
    explicit Chunks(std::string_view text) : text_(text), code_(text) {}

    bool isTechnicalAt(std::size_t at) {
        if (at >= end_) {
            const auto before = text_.find_last_of(blanks, at);
            const auto start = before == std::string_view::npos ? 0 : before + 1;
            end_ = std::min(text_.find_first_of(blanks, at), text_.size());
            technical_ = isTechnical(text_.substr(start, end_ - start));
        }
        return technical_ || code_.contains(at);
    }

private:
    std::string_view text_;
    std::size_t end_ = 0;
    bool technical_ = false;
    Code code_;
};

} // namespace

std::vector<TextPiece> textPieces(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    UText utf8 = UTEXT_INITIALIZER;
    utext_openUTF8(&utf8, text.data(), static_cast<std::int64_t>(text.size()), &status);
    const auto words = wordIterator();
    if (words) words->setText(&utf8, status);

    std::vector<TextPiece> pieces;
    Chunks chunks(text);
    std::size_t done = 0, at = 0;
    while (words && U_SUCCESS(status)) {
        const std::int32_t next = words->next();
        if (next == icu::BreakIterator::DONE) break;
        const std::size_t start = at;
        at = static_cast<std::size_t>(next);
        if (words->getRuleStatus() == UBRK_WORD_NONE) continue;
        const auto word = text.substr(start, at - start);
        pieces.push_back(
            {text.substr(done, start - done), word, isPlainWord(word) && !chunks.isTechnicalAt(start)});
        done = at;
    }
    if (done < text.size()) pieces.push_back({text.substr(done), {}, false});
    utext_close(&utf8);
    return pieces;
}

} // namespace quillmark
