// What was seen in one cell of the table.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace compat {

struct Outcome {
    std::optional<double> milliseconds = {};
    std::string note = {};  // how, where it is not the usual way
    std::string wrong = {}; // what must not have happened; empty when all was well
};

// By the column's name.
using Outcomes = std::map<std::string, Outcome>;

namespace columns {
inline constexpr const char* first = "first capture";
inline constexpr const char* selection = "selection";
inline constexpr const char* field = "field";
inline constexpr const char* password = "password";
inline constexpr const char* intoSelection = "paste into selection";
inline constexpr const char* intoField = "paste into field";
inline constexpr const char* undo = "one undo";
inline constexpr const char* windows = "two windows";
inline constexpr const char* pasteboard = "pasteboard kept";
inline constexpr const char* names = "names";

inline constexpr const char* nothing = "–"; // in a cell: there is nothing to try
inline constexpr const char* all[]{first,     selection, field,   password,   intoSelection,
                                   intoField, undo,      windows, pasteboard, names};
} // namespace columns

} // namespace compat
