// Tries the host in every program of the table, and prints the table.
//
//   compat measure FOLDER [--runs N] [--only PART OF A NAME] [--minutes M]
//   compat print FOLDER [--only PART OF A NAME]
//   compat forget-unfinished FOLDER
//
// Measures every row N times, as far as its results are not in the folder yet, nor being measured by another
// process; with minutes, no row is begun when so many have passed. Runs under script/virtual-desktop, with
// the programs installed; script/compat does all of that. Progress goes to standard error. Printing exits 1
// when anything was wrong.
#include "testing/compat/measure.h"
#include "testing/compat/table.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <random>
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
void tell(const std::string& row, int number, const compat::Run& run) {
    std::ostringstream lines;
    lines << row << ", run " << number << " at a load of " << run.load << '\n';
    for (const auto& [column, outcome] : run.outcomes) {
        lines << "  " << column << ": ";
        if (outcome.milliseconds) lines << *outcome.milliseconds << " ms ";
        lines << outcome.note << (outcome.wrong.empty() ? "" : " WRONG: ") << outcome.wrong << '\n';
    }
    std::cerr << lines.str() << std::flush;
}

struct Options {
    std::string task, folder;
    int runs = 1;
    std::string only;
    std::chrono::minutes limit = std::chrono::hours(24);
};

std::vector<compat::Target> chosenTargets(const Options& options) {
    auto targets = compat::allTargets();
    std::erase_if(targets,
                  [&](const auto& target) { return target.name.find(options.only) == target.name.npos; });
    return targets;
}

compat::Run measureOnce(testbed::Desktop& desktop, testbed::Host& host, const compat::Target& target) {
    compat::Run run;
    try {
        run.outcomes = measure(desktop, host, target);
    } catch (const std::exception& problem) {
        run.outcomes = {{compat::columns::first, {.note = std::string("not measured: ") + problem.what()}}};
    }
    getloadavg(&run.load, 1);
    return run;
}

int measureAll(const Options& options) {
    const auto start = testbed::Clock::now();
    testbed::Desktop desktop;
    testbed::Host host;
    host.bringToFront(desktop);
    host.call("initialize", flutter::EncodableMap{});
    compat::Results results(options.folder);
    for (int number = 1; number <= options.runs; ++number) {
        auto targets = chosenTargets(options);
        // Else all desktops would start the heaviest programs at the same time.
        std::ranges::shuffle(targets, std::mt19937(static_cast<unsigned>(number)));
        for (const compat::Target& target : targets) {
            if (testbed::Clock::now() - start >= options.limit) return 0;
            if (!results.claim(number, target.name)) continue;
            const compat::Run run = measureOnce(desktop, host, target);
            results.keep(number, target.name, run);
            tell(target.name, number, run);
        }
    }
    return 0;
}

int printAll(const Options& options) {
    const compat::Results results(options.folder);
    std::vector<compat::Row> rows;
    for (const compat::Target& target : chosenTargets(options))
        rows.push_back({target.name, versionOf(target.package), target.remark, results.of(target.name)});
    print(rows, std::cout);
    const int wrong = countWrong(rows);
    std::cerr << "compat: " << wrong << " wrong" << std::endl;
    return wrong > 0 ? 1 : 0;
}

int run(const Options& options) {
    if (options.task == "measure") return measureAll(options);
    if (options.task == "print") return printAll(options);
    compat::Results(options.folder).forgetUnfinished();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "compat: see the head of its main.cpp for what it takes" << std::endl;
        return 2;
    }
    Options options;
    options.task = argv[1];
    options.folder = argv[2];
    for (int i = 3; i + 1 < argc; i += 2) {
        const std::string name = argv[i], value = argv[i + 1];
        if (name == "--runs") options.runs = std::stoi(value);
        if (name == "--only") options.only = value;
        if (name == "--minutes") options.limit = std::chrono::minutes(std::stoi(value));
    }
    try {
        return run(options);
    } catch (const std::exception& problem) {
        std::cerr << "compat: " << problem.what() << std::endl;
        return 1;
    }
}
