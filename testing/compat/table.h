// docs/programs.md below its head: how it was measured, what the words in the cells mean, and the table.
#pragma once

#include "testing/compat/results.h"

#include <ostream>
#include <string>
#include <vector>

namespace compat {

struct Row {
    std::string name, version, remark;
    std::vector<Run> runs;
};

// In Markdown. A cell has the median of its times with the longest, and what was seen besides, with how
// often. Only words that are in the table are explained; the rows' remarks stand below it.
void print(const std::vector<Row>& rows, std::ostream& out);

// How many cells of all runs were wrong.
int countWrong(const std::vector<Row>& rows);

} // namespace compat
