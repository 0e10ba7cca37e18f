#include "check/finding.h"

#include "language/check_phrases.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include <algorithm>
#include <array>

namespace quillmark {

namespace {

namespace json = boost::json;

constexpr std::array gradeNames{"good", "degraded", "missing"}; // in the order of Grade

std::optional<Finding> readFinding(const json::value& value) {
    const auto* object = value.if_object();
    if (object == nullptr) return std::nullopt;
    const auto text = [object](std::string_view key) {
        const auto* member = object->if_contains(key);
        return member && member->is_string() ? std::string(member->get_string().c_str()) : std::string();
    };
    const auto grade = std::ranges::find(gradeNames, text("grade"));
    if (grade == gradeNames.end()) return std::nullopt;
    return Finding{text("name"), static_cast<Grade>(grade - gradeNames.begin()), text("found"),
                   text("meaning"), text("mend")};
}

const phrases::Need* needOf(const Finding& finding) {
    const auto need = std::ranges::find(phrases::needs, finding.name, &phrases::Need::name);
    return need == phrases::needs.end() ? nullptr : &*need;
}

std::string joined(std::string sentences, const std::string& more) {
    if (!sentences.empty() && !more.empty()) sentences += ' ';
    return sentences + more;
}

} // namespace

std::optional<std::vector<Finding>> readFindings(std::string_view printed) {
    json::error_code error;
    const auto value = json::parse(json::string_view(printed.data(), printed.size()), error);
    const auto* object = error ? nullptr : value.if_object();
    const auto* checks = object ? object->if_contains("checks") : nullptr;
    if (checks == nullptr || !checks->is_array()) return std::nullopt;
    std::vector<Finding> findings;
    for (const auto& check : checks->get_array()) {
        auto finding = readFinding(check);
        if (!finding) return std::nullopt;
        findings.push_back(std::move(*finding));
    }
    return findings;
}

std::string nameOf(const Finding& finding) {
    const auto* need = needOf(finding);
    return need ? say(need->title) : finding.name;
}

std::string gradeOf(const Finding& finding) {
    return say(phrases::grades.at(static_cast<std::size_t>(finding.grade)));
}

std::string foundOf(const Finding& finding) { return translated(finding.found, phrases::facts); }

// The host speaks English; it knows the case at hand, the table only what is true of every one.
std::string explanationOf(const Finding& finding) {
    if (finding.grade == Grade::good) return {};
    std::string words = joined(finding.meaning, finding.mend);
    const auto* need = needOf(finding);
    if (language() == Language::english || !need) return words;
    return need->explained + (words.empty() ? std::string() : "\n" + words);
}

std::string summaryOf(const std::vector<Finding>& findings) {
    const auto number = [&](Grade grade) {
        return std::to_string(std::ranges::count(findings, grade, &Finding::grade));
    };
    const bool good =
        std::ranges::all_of(findings, [](const auto& finding) { return finding.grade == Grade::good; });
    return good ? say(phrases::allGood)
                : say(phrases::notAllGood, {number(Grade::missing), number(Grade::degraded)});
}

std::string reportOf(const std::vector<Finding>& findings) {
    std::string report;
    for (const auto& finding : findings) {
        report += finding.name + ": " + gradeNames.at(static_cast<std::size_t>(finding.grade)) + ": " +
                  finding.found + '\n';
        if (const auto words = joined(finding.meaning, finding.mend); !words.empty())
            report += "    " + words + '\n';
    }
    return report;
}

} // namespace quillmark
