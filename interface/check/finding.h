// What Quillmark needs on this desktop, and whether it is there, as the host's command line says it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

enum class Grade { good, degraded, missing };

struct Finding {
    std::string name; // such as "hot-key"
    Grade grade = Grade::good;
    std::string found; // these three are the host's own words, in English
    std::string meaning = {};
    std::string mend = {};
};

// Of what `quillmark-host --check --json` prints. Absent when it is something else.
std::optional<std::vector<Finding>> readFindings(std::string_view json);

// In the person's language. Of a thing that this version does not know, the host's name.
std::string nameOf(const Finding& finding);
std::string gradeOf(const Finding& finding);
// What there is.
std::string foundOf(const Finding& finding);
// What it means and what to do, with the host's own words where those say it more exactly. Empty when good.
std::string explanationOf(const Finding& finding);
// "Missing: 1, degraded: 2".
std::string summaryOf(const std::vector<Finding>& findings);

// All of it in the host's words, for whoever helps the person.
std::string reportOf(const std::vector<Finding>& findings);

} // namespace quillmark
