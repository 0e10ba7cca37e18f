// Tries the host in every program of the table, and prints the table.
//
//   compat [--runs N] [--only PART OF A NAME]
//
// Runs under script/virtual-desktop, with the programs installed; script/compat does both. Progress goes to
// standard error. Exits 1 when anything was wrong.
#include "testing/compat/measure.h"
#include "testing/compat/table.h"

#include <exception>
#include <iostream>

namespace {

std::string versionOf(const std::string& package) {
    testbed::Process query({"dpkg-query", "-W", "-f", "${Version}", package});
    query.exitStatus();
    std::string version = query.output();
    version.erase(0, version.find(':') + 1); // Debian's epoch
    return version.substr(0, version.find_first_of("-+~"));
}

void tell(const compat::Row& row) {
    for (const auto& [column, outcome] : row.runs.back()) {
        std::cerr << "  " << column << ": ";
        if (outcome.milliseconds) std::cerr << *outcome.milliseconds << " ms ";
        std::cerr << outcome.note << (outcome.wrong.empty() ? "" : " WRONG: ") << outcome.wrong << '\n';
    }
}

int run(int runs, const std::string& only) {
    testbed::Desktop desktop;
    testbed::Host host;
    host.bringToFront(desktop);
    host.call("initialize", flutter::EncodableMap{});
    std::vector<compat::Row> rows;
    for (const compat::Target& target : compat::allTargets())
        if (target.name.find(only) != std::string::npos) {
            rows.push_back({target.name, versionOf(target.package), target.remark, {}});
            for (int number = 1; number <= runs; ++number) {
                std::cerr << target.name << ", run " << number << std::endl;
                try {
                    rows.back().runs.push_back(measure(desktop, host, target));
                } catch (const std::exception& problem) {
                    rows.back().runs.push_back({{compat::columns::first, {.wrong = problem.what()}}});
                }
                tell(rows.back());
            }
        }
    print(rows, std::cout);
    const int wrong = countWrong(rows);
    std::cerr << "compat: " << wrong << " wrong" << std::endl;
    return wrong > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    int runs = 1;
    std::string only;
    for (int i = 1; i + 1 < argc; i += 2) {
        if (std::string(argv[i]) == "--runs") runs = std::stoi(argv[i + 1]);
        if (std::string(argv[i]) == "--only") only = argv[i + 1];
    }
    try {
        return run(runs, only);
    } catch (const std::exception& problem) {
        std::cerr << "compat: " << problem.what() << std::endl;
        return 1;
    }
}
