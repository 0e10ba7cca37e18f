#include "testing/compat/table.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>

namespace compat {
namespace {

// What a person still takes for at once, after the wait for a copy where there is one; and what the first
// capture of a program that has just started may take.
constexpr double copyWait = 400, soon = 150, cold = 2000; // milliseconds

struct Word {
    const char* word; // a cell's note begins with it
    const char* meaning;
};

constexpr Word words[]{
    {"copied-only",
     "the rewritten text is on the pasteboard and was not typed, because what the program had in front "
     "was not, or not provably, what was captured, or because it was too busy to tell in time."},
    {"copied",
     "the text came by the copy keystroke, because the program does not show it to accessibility, or "
     "too late. It cannot be pasted back into its place."},
    {"not read",
     "there is a text, but the host can neither read nor copy it; the interface gets what is on the "
     "pasteboard."},
    {"not measured",
     "the program did not come up, or did not take its text, so that the run says nothing of it."},
    {"nothing happens", "the host sent nothing within four seconds."},
    {"another text", "the text that was sent is not the one that was meant. It cannot be pasted back."},
    {"without a place", "the right text, which cannot be pasted back."},
    {"its beginning",
     "the first 3,000 characters of the field, which cannot be pasted back: the rest would be lost."},
    {"refused", "the host beeps, and sends nothing."},
    {"leaves",
     "the text after one undo, where that is not the text before the paste, and what one undo leaves after "
     "a person's own paste."},
    {columns::nothing,
     "nothing to try: what was captured cannot be pasted back, or another row of the program has it (a "
     "password field, a second window)."},
};

std::string rounded(double number) { return std::to_string(std::lround(number)); }

std::string times(int count, std::size_t of) {
    return " (" + std::to_string(count) + " of " + std::to_string(of) + ")";
}

// What was seen in one cell, in all runs of its row.
std::vector<Outcome> seenIn(const Row& row, const std::string& column) {
    std::vector<Outcome> seen;
    for (const Run& run : row.runs)
        if (const auto found = run.outcomes.find(column); found != run.outcomes.end())
            seen.push_back(found->second);
    return seen;
}

template <typename Visit>
void forEachCell(const std::vector<Row>& rows, Visit visit) {
    for (const Row& row : rows)
        for (const char* column : columns::all)
            if (const auto seen = seenIn(row, column); !seen.empty()) visit(row, column, seen);
}

std::vector<double> timesOf(const std::vector<Outcome>& seen) {
    std::vector<double> times;
    for (const Outcome& outcome : seen)
        if (outcome.milliseconds) times.push_back(*outcome.milliseconds);
    std::ranges::sort(times);
    return times;
}

std::string cell(const std::vector<Outcome>& seen) {
    if (seen.empty()) return columns::nothing;
    std::string text;
    if (const auto times = timesOf(seen); !times.empty()) {
        text = rounded(times[times.size() / 2]) + " ms";
        if (times.size() > 1) text += " (" + rounded(times.back()) + ")";
    }
    std::map<std::string, int> notes;
    for (const Outcome& outcome : seen) {
        if (!outcome.wrong.empty()) ++notes["**wrong:** " + outcome.wrong];
        if (!outcome.note.empty()) ++notes[outcome.note];
    }
    for (const auto& [note, count] : notes) {
        if (!text.empty()) text += ", ";
        text += note;
        if (static_cast<std::size_t>(count) < seen.size()) text += times(count, seen.size());
    }
    return text.empty() ? "yes" : text;
}

// The most that a capture may take; absent where nothing is captured.
std::optional<double> limitOf(const std::string& column, const Outcome& outcome) {
    if (column == columns::first) return cold;
    if (column != columns::selection && column != columns::field) return std::nullopt;
    const bool waits = column == columns::field || outcome.note == "copied" || outcome.note == "not read";
    return waits ? copyWait + soon : soon;
}

bool isSlow(const std::string& column, const Outcome& outcome) {
    const auto limit = limitOf(column, outcome);
    return limit && outcome.milliseconds && *outcome.milliseconds > *limit;
}

void printCounts(const std::vector<Row>& rows, std::ostream& out) {
    int captures = 0, slow = 0;
    std::string which;
    forEachCell(rows, [&](const Row& row, const char* column, const std::vector<Outcome>& seen) {
        const auto slowHere =
            std::ranges::count_if(seen, [&](const auto& each) { return isSlow(column, each); });
        captures += static_cast<int>(std::ranges::count_if(
            seen, [&](const Outcome& each) { return each.milliseconds && limitOf(column, each); }));
        if (slowHere == 0) return;
        slow += static_cast<int>(slowHere);
        which += "\n- " + row.name + ", " + column + ": " + std::to_string(slowHere) + " of " +
                 std::to_string(seen.size()) + ", " + rounded(timesOf(seen).back()) + " ms at most";
    });
    out << slow << " of " << captures << " captures took longer than " << soon << " ms, or "
        << soon + copyWait << " ms with the wait for a copy, or " << cold
        << " ms right after the program's start" << (which.empty() ? "." : ":\n") << which << "\n\n";
}

void printHow(const std::vector<Row>& rows, std::ostream& out) {
    std::vector<double> loads;
    std::size_t fewest = rows.empty() ? 0 : rows.front().runs.size(), most = 0, cells = 0;
    for (const Row& row : rows) {
        for (const Run& run : row.runs) {
            loads.push_back(run.load);
            cells += run.outcomes.size();
        }
        fewest = std::min(fewest, row.runs.size());
        most = std::max(most, row.runs.size());
    }
    if (loads.empty()) return;
    std::ranges::sort(loads);
    std::string system, line;
    for (std::ifstream file("/etc/os-release"); std::getline(file, line);)
        if (line.starts_with("PRETTY_NAME=")) system = line.substr(13, line.size() - 14);
    out << "Measured on " << system
        << " with openbox; runs of each row: " << (fewest == most ? "" : std::to_string(fewest) + " to ")
        << most << "; " << sysconf(_SC_NPROCESSORS_ONLN) << " processors, which had "
        << rounded(loads[loads.size() / 2]) << " processes to run at a time (" << rounded(loads.back())
        << " at most). Of " << cells << " cells in all runs " << countWrong(rows) << " were wrong.\n\n";
}

void printWords(const std::vector<Row>& rows, std::ostream& out) {
    std::map<std::string, bool> used;
    const auto wordOf = [](const std::string& note) {
        return std::ranges::find_if(words, [&](const Word& word) { return note.starts_with(word.word); });
    };
    forEachCell(rows, [&](const Row&, const char*, const std::vector<Outcome>& seen) {
        for (const Outcome& outcome : seen)
            if (const auto word = wordOf(outcome.note); word != std::end(words)) used[word->word] = true;
    });
    used[columns::nothing] = true;
    for (const auto& [word, meaning] : words)
        if (used.contains(word)) out << "- \"" << word << "\": " << meaning << '\n';
    if (countWrong(rows) > 0) out << "- \"wrong\": what must not happen.\n";
    out << '\n';
}

} // namespace

void print(const std::vector<Row>& rows, std::ostream& out) {
    printHow(rows, out);
    printCounts(rows, out);
    printWords(rows, out);
    out << "| program | version |";
    for (const char* column : columns::all)
        out << ' ' << column << " |";
    out << "\n|---|---|";
    for (std::size_t i = 0; i < std::size(columns::all); ++i)
        out << "---|";
    out << '\n';
    for (const Row& row : rows) {
        out << "| " << row.name << " | " << row.version << " |";
        for (const char* column : columns::all)
            out << ' ' << cell(seenIn(row, column)) << " |";
        out << '\n';
    }
    out << '\n';
    for (const Row& row : rows)
        if (!row.remark.empty()) out << "- " << row.name << ": " << row.remark << '\n';
}

int countWrong(const std::vector<Row>& rows) {
    int count = 0;
    for (const Row& row : rows)
        for (const Run& run : row.runs)
            count += static_cast<int>(std::ranges::count_if(
                run.outcomes, [](const auto& cell) { return !cell.second.wrong.empty(); }));
    return count;
}

} // namespace compat
