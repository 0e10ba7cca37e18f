#include "platform/linux/programs/process.h"

#include "platform/linux/base/pidfd.h"
#include "platform/linux/programs/desktop_files.h"

#include <poll.h>

#include <fstream>
#include <sstream>

namespace platform {
namespace {

std::string contents(pid_t id, const char* file) {
    std::ifstream stream("/proc/" + std::to_string(id) + "/" + file);
    std::string text;
    std::getline(stream, text, '\0');
    return text;
}

// Field 22 of /proc/…/stat. The name in field 2 stands in brackets and may contain spaces and brackets.
std::optional<std::uint64_t> startTimeOf(pid_t id) {
    const std::string status = contents(id, "stat");
    const std::size_t nameEnd = status.rfind(')');
    if (nameEnd == std::string::npos) return std::nullopt;
    std::istringstream fields(status.substr(nameEnd + 1));
    std::string skipped;
    for (int field = 3; field < 22; ++field)
        fields >> skipped;
    std::uint64_t ticks = 0;
    return fields >> ticks ? std::optional(ticks) : std::nullopt;
}

} // namespace

RunningApplication::Process::Process(pid_t id, x11::WindowId window)
    : id_(id), window_(window), startTime_(startTimeOf(id)), descriptor_(openProcess(id)),
      applicationId_(x11::windowApplicationId(window)), class_(x11::windowClass(window)) {}

bool RunningApplication::Process::isTerminated() const {
    if (!startTime_) return true;
    if (!descriptor_) return startTimeOf(id_) != startTime_;
    pollfd ended{descriptor_.number(), POLLIN, 0};
    return ::poll(&ended, 1, 0) > 0;
}

std::optional<std::string> RunningApplication::Process::desktopFile() const {
    if (applicationId_ && desktopFileName(*applicationId_)) return applicationId_;
    return class_ ? desktopFileOf(*class_) : std::nullopt;
}

std::optional<std::string> RunningApplication::Process::identity() const {
    if (applicationId_) return applicationId_;
    if (auto file = desktopFile()) return file;
    if (class_ && !class_->name.empty()) return class_->name;
    return std::nullopt;
}

std::optional<std::string> RunningApplication::Process::name() const {
    if (const auto file = desktopFile())
        if (auto name = desktopFileName(*file)) return name;
    if (class_ && !class_->name.empty()) return class_->name;
    std::string name = contents(id_, "comm");
    if (!name.empty() && name.back() == '\n') name.pop_back();
    return name.empty() ? std::nullopt : std::optional(name);
}

} // namespace platform
