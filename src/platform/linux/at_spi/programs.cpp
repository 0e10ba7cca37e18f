#include "platform/linux/at_spi/programs.h"

#include "platform/linux/base/own_processes.h"

#include <fstream>

namespace platform::at_spi {
namespace {

// A sandbox talks to the bus through a process of its own, which is then what the bus knows.
bool isSandboxProxy(pid_t process) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    return name == "xdg-dbus-proxy";
}

Question processOf(const std::string& name) {
    return {"org.freedesktop.DBus",
            "/org/freedesktop/DBus",
            "org.freedesktop.DBus",
            "GetConnectionUnixProcessID",
            "(u)",
            arguments("(s)", name.c_str())};
}

} // namespace

std::optional<std::vector<Program*>> Programs::of(Bus& bus, pid_t process) {
    std::erase_if(programs_, [](const auto& entry) { return entry.second.gone; });
    auto found = known(process);
    if (!found.empty()) return found;
    if (!refresh(bus)) return std::nullopt;
    return known(process);
}

std::vector<Program*> Programs::all(Bus& bus) {
    std::vector<Program*> result;
    if (!refresh(bus)) return result;
    for (auto& [name, program] : programs_)
        if (!isOwnProcess(program.process)) result.push_back(&program);
    return result;
}

std::vector<Program*> Programs::sandboxed() {
    std::vector<Program*> result;
    for (auto& [name, program] : programs_)
        if (program.behindProxy) result.push_back(&program);
    return result;
}

// Takes the list of programs anew: drops who has left, and learns the processes of the new ones.
bool Programs::refresh(Bus& bus) {
    const Answer list = bus.ask(childrenOf(rootOf(registry)));
    if (!list.value) return false;
    std::map<std::string, Program> present;
    std::vector<std::string> strangers;
    std::vector<Question> questions;
    for (const Object& root : objectsIn(list)) {
        if (auto known = programs_.extract(root.program))
            present.insert(std::move(known));
        else if (!present.contains(root.program)) {
            strangers.push_back(root.program);
            questions.push_back(processOf(root.program));
        }
    }
    const auto answers = bus.ask(std::move(questions));
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (!answers[i].value) continue;
        guint32 process = 0;
        g_variant_get(answers[i].value.get(), "(u)", &process);
        Program& program = present[strangers[i]];
        program.name = strangers[i];
        program.process = static_cast<pid_t>(process);
        program.behindProxy = isSandboxProxy(program.process);
    }
    programs_ = std::move(present);
    return true;
}

std::vector<Program*> Programs::known(pid_t process) {
    std::vector<Program*> result;
    for (auto& [name, program] : programs_)
        if (program.process == process) result.push_back(&program);
    return result;
}

} // namespace platform::at_spi
