// What the person wants done with a text.
#pragma once

#include <string>
#include <vector>

namespace quillmark {

struct Instruction {
    std::string name = {};     // as its button says
    std::string prompt = {};   // what the model is told; "{}" stands for the answer to the question
    std::string question = {}; // asked before each use; empty: nothing is asked
    std::string key = {};      // as GTK writes accelerators, such as "<Control>1"; empty: none
    bool corrects = false;     // where there is no model, the spelling corrector does this one

    friend bool operator==(const Instruction&, const Instruction&) = default;
};

// The ones of a new installation, in the language in use.
std::vector<Instruction> defaultInstructions();

// What the model is sent: the instruction with the answer in its place, and what holds for every rewrite.
std::string systemMessage(const Instruction& instruction, const std::string& answer);

} // namespace quillmark
