#pragma once

#include "testing/compat/outcome.h"

#include <ostream>
#include <string>
#include <vector>

namespace compat {

struct Row {
    std::string name, version, remark;
    std::vector<Outcomes> runs;
};

// In Markdown: of every cell the median of its times with the longest, and what was seen besides, with how
// often. The rows' remarks stand below.
void print(const std::vector<Row>& rows, std::ostream& out);

// How many cells of all runs were wrong.
int countWrong(const std::vector<Row>& rows);

} // namespace compat
