#include "platform/linux/checks/finding.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include <algorithm>
#include <array>

namespace platform {
namespace {

namespace json = boost::json;

constexpr std::array grades{"good", "degraded", "missing"};
constexpr std::size_t gradeWidth = 10, nameWidth = 19;

const char* word(Finding::Grade grade) { return grades[static_cast<std::size_t>(grade)]; }

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

} // namespace

Finding::Grade worst(const std::vector<Finding>& findings) {
    Finding::Grade grade = Finding::Grade::good;
    for (const auto& finding : findings)
        grade = std::max(grade, finding.grade);
    return grade;
}

std::string inWords(const std::vector<Finding>& findings) {
    std::string text;
    for (const auto& finding : findings) {
        std::string name = finding.name;
        std::ranges::replace(name, '-', ' ');
        text += padded(word(finding.grade), gradeWidth) + padded(name, nameWidth) + finding.found + '\n';
        for (const auto& sentence : {finding.meaning, finding.mend})
            if (!sentence.empty()) text += std::string(gradeWidth + nameWidth, ' ') + sentence + '\n';
    }
    return text;
}

std::string inJson(const std::vector<Finding>& findings) {
    json::array checks;
    for (const auto& finding : findings)
        checks.push_back({{"name", finding.name},
                          {"grade", word(finding.grade)},
                          {"found", finding.found},
                          {"meaning", finding.meaning},
                          {"mend", finding.mend}});
    return json::serialize(json::object{{"worst", word(worst(findings))}, {"checks", std::move(checks)}}) +
           '\n';
}

} // namespace platform
