#include "platform/linux/at_spi/applications.h"

#include "platform/linux/base/own_processes.h"

#include <fstream>

namespace platform::at_spi {
namespace {

// Programs in a Flatpak sandbox reach the bus through this process, and the bus takes it for theirs.
bool isSandboxProxy(pid_t process) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    return name == "xdg-dbus-proxy";
}

Call processOf(const std::string& name) {
    return {"org.freedesktop.DBus",
            "/org/freedesktop/DBus",
            "org.freedesktop.DBus",
            "GetConnectionUnixProcessID",
            "(u)",
            arguments("(s)", name.c_str())};
}

} // namespace

std::optional<std::vector<Application*>> Applications::of(Bus& bus, pid_t process) {
    std::erase_if(applications_, [](const auto& entry) { return entry.second.gone; });
    auto found = known(process);
    if (!found.empty()) return found;
    if (!refresh(bus)) return std::nullopt;
    return known(process);
}

std::vector<Application*> Applications::all(Bus& bus) {
    std::vector<Application*> result;
    if (!refresh(bus)) return result;
    for (auto& [name, program] : applications_)
        if (!isOwnProcess(program.process)) result.push_back(&program);
    return result;
}

std::vector<Application*> Applications::sandboxed() {
    std::vector<Application*> result;
    for (auto& [name, program] : applications_)
        if (program.behindProxy) result.push_back(&program);
    return result;
}

// Reads the list of programs again: drops those that have left, and asks for the processes of new ones.
bool Applications::refresh(Bus& bus) {
    const Reply list = bus.call(childrenOf(rootOf(registry)));
    if (!list.value) return false;
    std::map<std::string, Application> present;
    std::vector<std::string> strangers;
    std::vector<Call> calls;
    for (const Object& root : objectsIn(list)) {
        if (auto known = applications_.extract(root.program))
            present.insert(std::move(known));
        else if (!present.contains(root.program)) {
            strangers.push_back(root.program);
            calls.push_back(processOf(root.program));
        }
    }
    const auto replies = bus.call(std::move(calls));
    for (std::size_t i = 0; i < replies.size(); ++i) {
        if (!replies[i].value) continue;
        guint32 process = 0;
        g_variant_get(replies[i].value.get(), "(u)", &process);
        Application& program = present[strangers[i]];
        program.name = strangers[i];
        program.process = static_cast<pid_t>(process);
        program.behindProxy = isSandboxProxy(program.process);
    }
    applications_ = std::move(present);
    return true;
}

std::vector<Application*> Applications::known(pid_t process) {
    std::vector<Application*> result;
    for (auto& [name, program] : applications_)
        if (program.process == process) result.push_back(&program);
    return result;
}

} // namespace platform::at_spi
