#include "platform/models/server/thinking_filter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace platform {
namespace {

constexpr std::string_view blanks = " \t\r\n";

struct Marks {
    std::string_view begin, end;
};

// DeepSeek's and Qwen's, those of models trained on their answers, and Mistral's.
constexpr std::array<Marks, 3> marks{
    {{"<think>", "</think>"}, {"<thinking>", "</thinking>"}, {"[THINK]", "[/THINK]"}}};

// How much of the end of the text may be the beginning of the mark.
std::size_t beginningOf(std::string_view mark, std::string_view text) {
    std::size_t length = std::min(mark.size() - 1, text.size());
    while (!mark.starts_with(text.substr(text.size() - length)))
        --length;
    return length;
}

} // namespace

ThinkingFilter::ThinkingFilter(std::string_view prompt) {
    const bool inPrompt = std::ranges::any_of(marks, [&](const Marks& each) {
        return prompt.find(each.begin) != std::string_view::npos ||
               prompt.find(each.end) != std::string_view::npos;
    });
    if (!inPrompt) return;
    state_ = State::answering;
    mayHaveLoneEnd_ = false;
}

ThinkingFilter::Piece ThinkingFilter::add(std::string_view output) {
    pending_ += output;
    Piece piece;
    if (state_ == State::beginning && !leaveBeginning()) return piece;
    if (state_ == State::thinking && !leaveThinking()) return piece;
    if (state_ == State::answering && findLoneEnd(piece)) state_ = State::afterThinking;
    if (state_ == State::afterThinking) {
        pending_.erase(0, std::min(pending_.find_first_not_of(blanks), pending_.size()));
        if (pending_.empty()) return piece;
        state_ = State::answering;
    }
    piece.text = pending_.substr(0, pending_.size() - heldBack());
    pending_.erase(0, piece.text.size());
    return piece;
}

std::string ThinkingFilter::finish() {
    return state_ == State::thinking ? std::string() : std::exchange(pending_, {});
}

// False while a mark may still come.
bool ThinkingFilter::leaveBeginning() {
    const auto start = std::min(pending_.find_first_not_of(blanks), pending_.size());
    const std::string_view text = std::string_view(pending_).substr(start);
    for (const auto& each : marks) {
        if (text.starts_with(each.begin)) {
            state_ = State::thinking;
            end_ = each.end;
            pending_.erase(0, start + each.begin.size());
            return true;
        }
    }
    const bool mayCome =
        std::ranges::any_of(marks, [&](const Marks& each) { return each.begin.starts_with(text); });
    if (!mayCome) state_ = State::answering;
    return !mayCome;
}

bool ThinkingFilter::leaveThinking() {
    const auto at = pending_.find(end_);
    if (at == std::string::npos) {
        pending_.erase(0, pending_.size() - beginningOf(end_, pending_));
        return false;
    }
    pending_.erase(0, at + end_.size());
    state_ = State::afterThinking;
    mayHaveLoneEnd_ = false;
    return true;
}

// An end whose beginning is in the answer is part of it.
bool ThinkingFilter::findLoneEnd(Piece& piece) {
    if (!mayHaveLoneEnd_) return false;
    const auto [begin, end] = marks.front();
    const auto beginAt = pending_.find(begin), endAt = pending_.find(end);
    if (beginAt == std::string::npos && endAt == std::string::npos) return false;
    mayHaveLoneEnd_ = false;
    piece.startsOver = endAt < beginAt;
    if (piece.startsOver) pending_.erase(0, endAt + end.size());
    return piece.startsOver;
}

std::size_t ThinkingFilter::heldBack() const {
    if (!mayHaveLoneEnd_) return 0;
    return std::max(beginningOf(marks.front().begin, pending_), beginningOf(marks.front().end, pending_));
}

} // namespace platform
