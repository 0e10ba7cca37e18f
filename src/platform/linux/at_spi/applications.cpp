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

// The connections on the bus; absent when the bus does not reply.
std::optional<std::vector<std::string>> connections(Bus& bus) {
    const Reply reply = bus.call(toBus("ListNames", "(as)"));
    if (!reply.value) return std::nullopt;
    std::vector<std::string> names;
    const Variant list(g_variant_get_child_value(reply.value.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
        const Variant name(g_variant_get_child_value(list.get(), i));
        if (const char* text = g_variant_get_string(name.get(), nullptr); *text == ':')
            names.emplace_back(text);
    }
    return names;
}

} // namespace

std::optional<std::vector<Application*>> Applications::of(Bus& bus, pid_t process) {
    std::erase_if(applications_, [](const auto& entry) { return entry.second.gone; });
    auto found = known(process);
    if (!found.empty()) return found;
    if (!refresh(bus)) return std::nullopt;
    dropClients(bus, process);
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

// Reads the list of connections again: drops those that have left, and asks for the processes of new ones.
//
// Not the registry's list: after the registry was restarted, it does not have the programs of before.
bool Applications::refresh(Bus& bus) {
    const auto names = connections(bus);
    if (!names) return false;
    std::map<std::string, Application> present;
    std::vector<std::string> strangers;
    std::vector<Call> calls;
    for (const std::string& name : *names) {
        if (auto known = applications_.extract(name)) {
            present.insert(std::move(known));
        } else {
            strangers.push_back(name);
            calls.push_back(toBus("GetConnectionUnixProcessID", "(u)", arguments("(s)", name.c_str())));
        }
    }
    const auto replies = bus.call(std::move(calls));
    for (std::size_t i = 0; i < replies.size(); ++i) {
        if (!replies[i].value) continue;
        guint32 process = 0;
        g_variant_get(replies[i].value.get(), "(u)", &process);
        Application& application = present[strangers[i]];
        application.name = strangers[i];
        application.process = static_cast<pid_t>(process);
        application.behindProxy = isSandboxProxy(application.process);
    }
    applications_ = std::move(present);
    return true;
}

// Drops the process's connections that show no objects, such as a screen reader's.
void Applications::dropClients(Bus& bus, pid_t process) {
    for (Application* application : known(process))
        if (bus.call(roleOf(rootOf(application->name))).failure == Failure::refused) application->gone = true;
    std::erase_if(applications_, [](const auto& entry) { return entry.second.gone; });
}

std::vector<Application*> Applications::known(pid_t process) {
    std::vector<Application*> result;
    for (auto& [name, program] : applications_)
        if (program.process == process) result.push_back(&program);
    return result;
}

} // namespace platform::at_spi
