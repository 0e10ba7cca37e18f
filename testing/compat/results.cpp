#include "testing/compat/results.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace compat {

namespace {

// One line of a file, and a field of it.
std::string field(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\t'; }, ' ');
    return text;
}

Run read(std::istream& file) {
    Run run;
    std::string line, column, time;
    std::getline(file, line);
    run.load = std::stod(line);
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        Outcome outcome;
        std::getline(fields, column, '\t');
        std::getline(fields, time, '\t');
        std::getline(fields, outcome.note, '\t');
        std::getline(fields, outcome.wrong, '\t');
        if (!time.empty()) outcome.milliseconds = std::stod(time);
        run.outcomes[column] = outcome;
    }
    return run;
}

} // namespace

std::filesystem::path Results::file(int number, const std::string& row) const {
    return folder_ / std::to_string(number) / row;
}

bool Results::claim(int number, const std::string& row) {
    const auto path = file(number, row);
    std::filesystem::create_directories(path.parent_path());
    const int made = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (made >= 0) return close(made) == 0;
    if (errno != EEXIST) throw std::runtime_error("cannot write " + path.string());
    return false;
}

// At once, as a call that is stopped may be in the middle of it.
void Results::keep(int number, const std::string& row, const Run& run) {
    const auto path = file(number, row);
    const std::filesystem::path whole = path.string() + ".new";
    {
        std::ofstream out(whole);
        out << run.load << '\n';
        for (const auto& [column, outcome] : run.outcomes) {
            out << column << '\t';
            if (outcome.milliseconds) out << *outcome.milliseconds;
            out << '\t' << field(outcome.note) << '\t' << field(outcome.wrong) << '\n';
        }
    }
    std::filesystem::rename(whole, path);
}

std::vector<Run> Results::of(const std::string& row) const {
    std::vector<Run> runs;
    if (!std::filesystem::exists(folder_)) return runs;
    for (const auto& run : std::filesystem::directory_iterator(folder_)) {
        std::ifstream file(run.path() / row);
        if (file.peek() != std::ifstream::traits_type::eof()) runs.push_back(read(file));
    }
    return runs;
}

void Results::forgetUnfinished() {
    if (!std::filesystem::exists(folder_)) return;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder_))
        if (file.is_regular_file() && (file.file_size() == 0 || file.path().extension() == ".new"))
            std::filesystem::remove(file.path());
}

} // namespace compat
