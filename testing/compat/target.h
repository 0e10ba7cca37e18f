// What the table of programs is measured in: one text of one program, and the keys that work there.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace compat {

using Command = std::vector<std::string>;

// What a person presses, one after the other ("Control+Home"), an empty one standing for a pause; empty when
// there is no such thing in the program.
using Keys = std::vector<std::string>;

struct Target {
    std::string name;    // in the table
    std::string package; // Debian's, for its version
    // "{folder}" stands for a folder of the trial's own with `files` in it, here and in those.
    Command command;
    std::map<std::string, std::string> files = {};
    std::string title; // of its window, or a part of it, once it is ready
    std::string text;  // what is in the field
    Keys ready = {};   // to get into the field
    Keys fill = {};    // types the text; again when the program has lost it
    Keys select = {};
    std::string selected = {};
    Keys unselect = {};
    Keys selectAll = {"Control+a"};
    Keys copy = {"Control+c"};
    Keys undo = {"Control+z"};
    Keys newWindow = {}; // opens a second one with an empty text
    // Selects a line with the mouse instead, as one does in terminals, at this part of the window's height;
    // 0: with keys.
    double clicksAt = 0;
    // Copies its paragraphs with an empty line between two of them.
    bool hasSpacedParagraphs = false;
    bool holdsPicture = false; // which its whole text, pasted back, would take away
    // What `selected`, or the whole text, is rewritten to.
    std::string rewrite = "the words";    // short: one line anywhere
    std::optional<Command> password = {}; // the same program, in a password field
    // Why something is not measured, by the column.
    std::map<std::string, std::string> reasons = {};
    // Why cells of it are as they are; a whole sentence, or empty.
    std::string remark = {};
};

std::vector<Target> allTargets();

} // namespace compat
