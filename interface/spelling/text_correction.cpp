#include "spelling/text_correction.h"

#include "spelling/ascii.h"
#include "spelling/english_words.h"
#include "spelling/text_gaps.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillmark {
namespace {

template <std::size_t N>
bool isOneOf(const std::array<std::string_view, N>& words, std::string_view word) {
    return std::ranges::find(words, word) != words.end();
}

// "a , b" is no prose.
bool isLetter(std::string_view word) {
    return word.size() == 1 && word != "I" && word != "i" && word != "a" && word != "A";
}

// "had had" and "that that" are English.
constexpr std::array<std::string_view, 8> neverTwice{"the",  "an",  "and",   "my",
                                                     "your", "our", "their", "with"};
// "as was his wont" is none.
constexpr std::array<std::string_view, 10> whoWillNot{"i",  "you",  "he",   "she",  "it",
                                                      "we", "they", "that", "this", "there"};

} // namespace

TextCorrection::TextCorrection(std::string text, WordCorrector& corrector)
    : text_(std::move(text)), corrector_(corrector), pieces_(textPieces(text_)), english_(isEnglish()) {
    for (std::size_t at = 1; at < pieces_.size(); ++at)
        severalSentences_ = severalSentences_ || (!pieces_[at].word.empty() && startsSentence(at));
}

std::optional<std::string> TextCorrection::next() {
    while (next_ < pieces_.size() && isRepeated(next_))
        ++next_;
    if (next_ == pieces_.size()) return std::nullopt;
    const auto at = next_++;
    return gapBefore(at) + wordAt(at);
}

// A dictionary finds something to correct in every word of another language. A few words may all be wrong.
bool TextCorrection::isEnglish() const {
    constexpr std::ptrdiff_t few = 6;
    const auto words = std::ranges::count_if(pieces_, &TextPiece::isOrdinary);
    const auto known = std::ranges::count_if(
        pieces_, [&](const TextPiece& piece) { return piece.isOrdinary && corrector_.knows(piece.word); });
    return words < few || 2 * known >= words;
}

bool TextCorrection::isRepeated(std::size_t at) const {
    if (!english_ || at == 0 || !pieces_[at].isOrdinary || pieces_[at].before != " ") return false;
    const auto& word = pieces_[at].word;
    return isOneOf(neverTwice, word) && lowered(pieces_[at - 1].word) == word;
}

// Whether the word before is the end of a sentence, and not an abbreviation or an initial.
bool TextCorrection::startsSentence(std::size_t at) const {
    // A text of one sentence may be a piece of a longer one.
    if (at == 0) return severalSentences_ && isBlank(pieces_[at].before);
    const auto& last = pieces_[at - 1];
    const bool capitalised = !last.word.empty() && !isLower(last.word.front());
    // "ii. Rights": a number of a list, or a sentence of one word.
    const bool alone = at == 1 || last.before.find('\n') != std::string_view::npos;
    return !alone && endsSentence(gapBefore(at)) && last.isOrdinary &&
           last.word.size() > (capitalised ? 3u : 1u) && !isAbbreviation(lowered(last.word));
}

std::string TextCorrection::gapBefore(std::size_t at) const {
    const auto& piece = pieces_[at];
    if (!english_ || at == 0 || !pieces_[at - 1].isOrdinary) return std::string(piece.before);
    const bool last = at + 1 == pieces_.size() && piece.word.empty();
    if ((!last && !piece.isOrdinary) || isLetter(pieces_[at - 1].word) || isLetter(piece.word))
        return std::string(piece.before);
    const bool capital = !last && !isLower(piece.word.front());
    return tidied(piece.before, last ? GapBefore::end : capital ? GapBefore::capital : GapBefore::word);
}

std::string TextCorrection::wordAt(std::size_t at) const {
    const auto& piece = pieces_[at];
    if (!english_ || !piece.isOrdinary) return std::string(piece.word);
    const std::string_view after = at + 1 < pieces_.size() ? pieces_[at + 1].before : std::string_view();
    // "(i)", "i = 1"
    if (piece.word == "i" && after.find_first_of(")]=+*<>") != std::string_view::npos) return "i";
    if (piece.word == "wont" && at > 0 && piece.before == " " &&
        isOneOf(whoWillNot, lowered(pieces_[at - 1].word)))
        return "won't";
    auto word = corrector_.correct(piece.word);
    // "a) …": no label
    const bool label = piece.word.size() == 1 && !after.starts_with(' ');
    if (!label && startsSentence(at) && (word != piece.word || corrector_.knows(word)))
        word.front() = upper(word.front());
    return word;
}

} // namespace quillmark
