#include "spelling/text_correction.h"

#include "spelling/ascii.h"
#include "spelling/english_words.h"
#include "spelling/text_gaps.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillmark {
namespace {

template <std::size_t count>
bool isOneOf(const std::array<std::string_view, count>& words, std::string_view word) {
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

TextCorrection::TextCorrection(std::string text, Languages& languages)
    : text_(std::move(text)), pieces_(textPieces(text_)), language_(languages.of(pieces_)) {
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

bool TextCorrection::isRepeated(std::size_t at) const {
    if (!language_.isEnglish || at == 0 || !pieces_[at].isOrdinary || pieces_[at].before != " ") return false;
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
    if (!language_.isEnglish || at == 0 || !pieces_[at - 1].isOrdinary) return std::string(piece.before);
    const bool last = at + 1 == pieces_.size() && piece.word.empty();
    if ((!last && !piece.isOrdinary) || isLetter(pieces_[at - 1].word) || isLetter(piece.word))
        return std::string(piece.before);
    const bool capital = !last && !isLower(piece.word.front());
    return tidied(piece.before, last ? GapBefore::end : capital ? GapBefore::capital : GapBefore::word);
}

std::string TextCorrection::wordAt(std::size_t at) const {
    const auto& piece = pieces_[at];
    if (!language_.corrector || !piece.isOrdinary) return std::string(piece.word);
    auto word = language_.corrector->correct(piece.word, language_.isCertain);
    if (!language_.isEnglish) return word;
    const std::string_view after = at + 1 < pieces_.size() ? pieces_[at + 1].before : std::string_view();
    // "(i)", "i = 1", "for i in"
    const bool isLoop =
        at > 0 && pieces_[at - 1].word == "for" && at + 1 < pieces_.size() && pieces_[at + 1].word == "in";
    if (piece.word == "i" && (isLoop || after.find_first_of(")]=+*<>") != std::string_view::npos)) return "i";
    if (piece.word == "wont" && at > 0 && piece.before == " " &&
        isOneOf(whoWillNot, lowered(pieces_[at - 1].word)))
        return "won't";
    // "a) …": no label
    const bool label = piece.word.size() == 1 && !after.starts_with(' ');
    if (!label && startsSentence(at) && (word != piece.word || language_.corrector->knows(word)))
        word.front() = upper(word.front());
    return word;
}

} // namespace quillmark
