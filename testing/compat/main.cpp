// Tries the host in every program of the table, and prints the table.
//
//   compat [--runs N] [--only PART OF A NAME] [--share K/N] [--minutes M]
//
// With a share only every Nth row from the Kth on; with minutes, no run begins when so many have passed.
// Runs under script/virtual-desktop, with the programs installed; script/compat does both. Progress goes to
// standard error. Exits 1 when anything was wrong.
#include "testing/compat/measure.h"
#include "testing/compat/table.h"

#include <exception>
#include <iostream>
#include <sstream>

namespace {

std::string versionOf(const std::string& package) {
    testbed::Process query({"dpkg-query", "-W", "-f", "${Version}", package});
    query.exitStatus();
    std::string version = query.output();
    version.erase(0, version.find(':') + 1); // Debian's epoch
    return version.substr(0, version.find_first_of("-+~"));
}

// At once: other desktops print, too.
void tell(const compat::Row& row) {
    std::ostringstream lines;
    lines << row.name << ", run " << row.runs.size() << '\n';
    for (const auto& [column, outcome] : row.runs.back()) {
        lines << "  " << column << ": ";
        if (outcome.milliseconds) lines << *outcome.milliseconds << " ms ";
        lines << outcome.note << (outcome.wrong.empty() ? "" : " WRONG: ") << outcome.wrong << '\n';
    }
    std::cerr << lines.str() << std::flush;
}

struct Options {
    int runs = 1;
    std::string only;
    std::size_t share = 0, shares = 1;
    std::chrono::minutes limit = std::chrono::hours(24);
};

void measureOnce(testbed::Desktop& desktop, testbed::Host& host, const compat::Target& target,
                 compat::Row& row) {
    try {
        row.runs.push_back(measure(desktop, host, target));
    } catch (const std::exception& problem) {
        row.runs.push_back({{compat::columns::first, {.wrong = problem.what()}}});
    }
    tell(row);
}

int run(const Options& options) {
    const auto start = testbed::Clock::now();
    testbed::Desktop desktop;
    testbed::Host host;
    host.bringToFront(desktop);
    host.call("initialize", flutter::EncodableMap{});
    const auto all = compat::allTargets();
    std::vector<compat::Target> targets;
    for (std::size_t i = options.share; i < all.size(); i += options.shares)
        if (all[i].name.find(options.only) != std::string::npos) targets.push_back(all[i]);
    std::vector<compat::Row> rows;
    for (const compat::Target& target : targets)
        rows.push_back({target.name, versionOf(target.package), target.remark, {}});
    for (int number = 0; number < options.runs && testbed::Clock::now() - start < options.limit; ++number)
        for (std::size_t i = 0; i < targets.size(); ++i)
            measureOnce(desktop, host, targets[i], rows[i]);
    print(rows, std::cout);
    const int wrong = countWrong(rows);
    std::cerr << "compat: " << wrong << " wrong" << std::endl;
    return wrong > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string name = argv[i], value = argv[i + 1];
        if (name == "--runs") options.runs = std::stoi(value);
        if (name == "--only") options.only = value;
        if (name == "--minutes") options.limit = std::chrono::minutes(std::stoi(value));
        if (name == "--share") {
            options.share = std::stoul(value) - 1;
            options.shares = std::stoul(value.substr(value.find('/') + 1));
        }
    }
    try {
        return run(options);
    } catch (const std::exception& problem) {
        std::cerr << "compat: " << problem.what() << std::endl;
        return 1;
    }
}
