#pragma once

#include <string>
#include <vector>

namespace platform {

// One thing that the host needs on a desktop, looked at.
struct Finding {
    // `degraded`: the writer's work goes on, with less or with more effort. `missing`: it does not.
    enum class Grade { good, degraded, missing };

    std::string name; // of the thing, the same in every version and language, such as "window-manager"
    Grade grade = Grade::good;
    std::string found;   // what is there, a few words
    std::string meaning; // for the writer: sentences; empty when good
    std::string mend;    // what to do: sentences; empty when good
};

// Good without any.
Finding::Grade worst(const std::vector<Finding>& findings);

// For a person, and for a program.
std::string inWords(const std::vector<Finding>& findings);
std::string inJson(const std::vector<Finding>& findings);

} // namespace platform
