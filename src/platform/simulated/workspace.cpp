#include "platform/workspace.h"

#include "platform/simulated/world.h"

namespace platform {

using simulated::World;

class RunningApplication::Process {
public:
    std::shared_ptr<simulated::Program> program;
};

RunningApplication::RunningApplication(std::shared_ptr<const Process> process)
    : process_(std::move(process)) {}

RunningApplication RunningApplication::currentApplication() {
    return RunningApplication(std::make_shared<Process>(Process{World::current().host}));
}

pid_t RunningApplication::processIdentifier() const { return process_->program->pid; }
std::optional<std::string> RunningApplication::bundleIdentifier() const {
    return process_->program->bundleIdentifier;
}
std::optional<std::string> RunningApplication::localizedName() const {
    return process_->program->localizedName;
}
bool RunningApplication::isTerminated() const { return process_->program->ended; }

bool RunningApplication::activateFromApplication(const RunningApplication&) const {
    if (isTerminated()) return false;
    World::current().activate(*process_->program);
    return true;
}

bool RunningApplication::operator==(const RunningApplication& other) const {
    return process_->program == other.process_->program;
}

Workspace& Workspace::sharedWorkspace() {
    static Workspace workspace;
    return workspace;
}

std::optional<RunningApplication> Workspace::frontmostApplication() const {
    const auto& program = World::current().frontmost;
    if (!program) return std::nullopt;
    return RunningApplication(
        std::make_shared<RunningApplication::Process>(RunningApplication::Process{program}));
}

bool Workspace::openURL(const URL& url) const {
    World& world = World::current();
    world.openedLinks.push_back(url.absoluteString());
    return world.opensLinks;
}

void beep() {
    World& world = World::current();
    ++world.beeps;
    world.note("beep");
}

} // namespace platform
