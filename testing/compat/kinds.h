// The kinds of targets, and what they are made of.
#pragma once

#include "testing/compat/target.h"

#include <string>
#include <vector>

namespace compat {

inline const std::string document = "keep this\nteh words\nand this";
inline const std::string line = "keep teh words here";
inline const std::string pictureRemark =
    "the picture would be lost with the whole text, so that only a selection without it is read.";
// Selects "teh words" in one of them.
extern const Keys secondLine, words;

// An editor with a file of a few lines.
Target editor(std::string name, std::string package, Command command, std::string title = "note.txt");
// A small program, whose arguments are the kind of field and its text.
Target fields(std::string name, std::string package, const Command& program, const std::string& kind,
              bool manyLines);

// Gives the target so many lines of 50 characters in many scripts instead of its text, to be replaced as a
// whole.
void makeLong(Target& target, int lines);

// In the order of the table.
void addEditors(std::vector<Target>& targets);
void addOffice(std::vector<Target>& targets);
void addBrowsers(std::vector<Target>& targets);
void addTerminals(std::vector<Target>& targets);
void addOthers(std::vector<Target>& targets);

} // namespace compat
