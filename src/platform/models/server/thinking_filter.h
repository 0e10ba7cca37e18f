#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// Takes out of an answer what a model writes for itself before it answers: "<think>…</think>" at the
// beginning, where a server does not keep it apart. A plain value.
class ThinkingFilter {
public:
    // A prompt that has such marks in it may be answered with them: then nothing is taken out.
    explicit ThinkingFilter(std::string_view prompt);

    // What more of the model's output adds to the answer.
    struct Piece {
        std::string text;
        bool startsOver = false; // all that came before was thinking too
    };
    Piece add(std::string_view output);
    // What was held back because it might have become a mark.
    std::string finish();

private:
    enum class State { beginning, thinking, afterThinking, answering };

    bool leaveBeginning();
    bool leaveThinking();
    bool findLoneEnd(Piece& piece);
    std::size_t heldBack() const;

    State state_ = State::beginning;
    std::string_view end_;       // the mark that ends the thinking under way
    bool mayHaveLoneEnd_ = true; // some servers write the first mark into the prompt themselves
    std::string pending_;
};

} // namespace platform
