#include "platform/linux/checks/host_report.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>

namespace platform {
namespace {

constexpr std::array<const char*, 4> hotKeyWords{"none", "refused", "paused", "held"};

void take(HostReport& report, const std::string& key, const std::string& value) {
    if (key == "process") std::from_chars(value.data(), value.data() + value.size(), report.process);
    if (key == "combination") report.combination = value;
    if (key == "interface") report.interface = value;
    const auto word = std::ranges::find(hotKeyWords, value);
    if (key == "hot-key" && word != hotKeyWords.end())
        report.hotKey = static_cast<HostReport::HotKeyState>(word - hotKeyWords.begin());
}

} // namespace

// Lines of "key value".
std::string encode(const HostReport& report) {
    return "process " + std::to_string(report.process) + "\nhot-key " +
           hotKeyWords[static_cast<std::size_t>(report.hotKey)] + "\ncombination " + report.combination +
           "\ninterface " + report.interface + "\n";
}

HostReport decodeHostReport(const std::string& text) {
    HostReport report;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (const auto end = line.find(' '); end != std::string::npos)
            take(report, line.substr(0, end), line.substr(end + 1));
    return report;
}

} // namespace platform
