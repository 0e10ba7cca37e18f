#include "testing/compat/table.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace compat {
namespace {

std::string rounded(double number) { return std::to_string(std::lround(number)); }

std::string cell(const Row& row, const char* column) {
    std::vector<double> times;
    std::map<std::string, int> notes;
    int seen = 0;
    for (const Outcomes& outcomes : row.runs) {
        const auto found = outcomes.find(column);
        if (found == outcomes.end()) continue;
        const Outcome& outcome = found->second;
        ++seen;
        if (outcome.milliseconds) times.push_back(*outcome.milliseconds);
        if (!outcome.wrong.empty()) ++notes["**wrong:** " + outcome.wrong];
        if (!outcome.note.empty()) ++notes[outcome.note];
    }
    if (seen == 0) return "–";
    std::string text;
    if (!times.empty()) {
        std::ranges::sort(times);
        text = rounded(times[times.size() / 2]) + " ms";
        if (times.size() > 1) text += " (" + rounded(times.back()) + ")";
    }
    for (const auto& [note, count] : notes) {
        if (!text.empty()) text += ", ";
        text += note;
        if (count < seen) text += " (" + std::to_string(count) + " of " + std::to_string(seen) + ")";
    }
    std::ranges::replace(text, '\n', ' ');
    return text.empty() ? "yes" : text;
}

} // namespace

void print(const std::vector<Row>& rows, std::ostream& out) {
    out << "| program | version | runs |";
    for (const char* column : columns::all)
        out << ' ' << column << " |";
    out << "\n|---|---|---|";
    for (std::size_t i = 0; i < std::size(columns::all); ++i)
        out << "---|";
    out << '\n';
    for (const Row& row : rows) {
        out << "| " << row.name << " | " << row.version << " | " << row.runs.size() << " |";
        for (const char* column : columns::all)
            out << ' ' << cell(row, column) << " |";
        out << '\n';
    }
    out << '\n';
    for (const Row& row : rows)
        if (!row.remark.empty()) out << "- " << row.name << ": " << row.remark << '\n';
}

int countWrong(const std::vector<Row>& rows) {
    int count = 0;
    for (const Row& row : rows)
        for (const Outcomes& outcomes : row.runs)
            for (const auto& [column, outcome] : outcomes)
                if (!outcome.wrong.empty()) ++count;
    return count;
}

} // namespace compat
