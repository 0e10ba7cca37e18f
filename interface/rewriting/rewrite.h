// One captured text and what has become of it: a plain value.
#pragma once

#include "client/desktop.h"
#include "settings/instruction.h"

#include <optional>
#include <string>

namespace quillmark {

// Capture::source of a text that the person has typed into the window.
inline constexpr auto typedHere = "typed";

enum class Stage {
    nothing, // nothing has been captured yet
    asking,  // the person has to say first whether the model may have the text
    rewriting,
    done,
    stopped,  // by the person; what had come until then is there
    failed,   // Rewrite::why says why
    applying, // being put in
    applied,  // stands where the original stood
    copied,   // waits on the pasteboard, as it had to
    refused,  // could not be put in, and waits on the pasteboard
    takenBack // the original stands there again
};

struct Rewrite {
    Stage stage = Stage::nothing;
    // Its token is taken away once it is spent.
    Capture capture = {};
    Instruction instruction = {};
    std::string answer = {}; // to the instruction's question
    std::string text = {};   // the whole rewrite so far
    bool edited = false;
    bool used = false;         // applied or copied as it is
    bool spellingOnly = false; // by the spelling corrector
    bool originalCopied = false;
    std::string why = {}; // a sentence
};

// What the person can do with it now.
bool canRewrite(const Rewrite& rewrite); // with any instruction
bool canStop(const Rewrite& rewrite);
bool canApply(const Rewrite& rewrite); // put in, or copied where it cannot be put in
bool canCopy(const Rewrite& rewrite);
bool canPutBack(const Rewrite& rewrite);
bool canEdit(const Rewrite& rewrite);

// Quitting now would lose work.
bool isUnfinished(const Rewrite& rewrite);

// The text to paste over `now`, a new capture, so that the original stands there again. Absent when it does
// not hold the rewrite exactly once, or cannot be put back.
std::optional<std::string> withOriginalBack(const Capture& now, const Rewrite& rewrite);

} // namespace quillmark
