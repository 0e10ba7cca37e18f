// Results of the table on disk, so that several desktops can share its rows out, and several calls can make
// its runs: a file for each row of each run. Any number of processes.
#pragma once

#include "testing/compat/outcome.h"

#include <filesystem>
#include <string>
#include <vector>

namespace compat {

// One row in one run.
struct Run {
    double load = 0; // of the machine when it ended: how many processes ran or waited to, in the last minute
    Outcomes outcomes;
};

class Results {
public:
    explicit Results(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // True for one process only, until the run is forgotten.
    bool claim(int number, const std::string& row);
    void keep(int number, const std::string& row, const Run& run);
    // Those that are kept of that row.
    std::vector<Run> of(const std::string& row) const;
    // Lets claim again what was claimed and never kept. While no other process measures.
    void forgetUnfinished();

private:
    std::filesystem::path file(int number, const std::string& row) const;

    std::filesystem::path folder_;
};

} // namespace compat
