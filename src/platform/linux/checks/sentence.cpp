#include "platform/linux/checks/sentence.h"

namespace platform {

std::string asSentence(std::string line) {
    if (!line.empty() && line.front() >= 'a' && line.front() <= 'z')
        line.front() = static_cast<char>(line.front() - 'a' + 'A');
    return line;
}

Finding notThere(const std::string& name, const std::string& found, const std::string& problem) {
    const auto end = problem.find("; ");
    if (end == std::string::npos) return {name, Finding::Grade::missing, found, asSentence(problem), ""};
    return {name, Finding::Grade::missing, found, asSentence(problem.substr(0, end)) + ".",
            asSentence(problem.substr(end + 2))};
}

} // namespace platform
