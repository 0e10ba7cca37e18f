#include "platform/simulated/world.h"

#include <cstdio>
#include <cstdlib>

namespace simulated {
namespace {

World* onlyWorld = nullptr;

[[noreturn]] void abortWith(const char* sentence) {
    std::fprintf(stderr, "simulated desktop: %s\n", sentence);
    std::abort();
}

} // namespace

World::World() : host(std::make_shared<Program>()) {
    if (onlyWorld != nullptr) abortWith("there is a world already; destroy it before you create another.");
    host->name = "Quillmark";
    host->localizedName = host->name;
    host->bundleIdentifier = "quillmark.quillmark";
    host->pid = 100;
    host->accessibility = Accessibility::missing;
    programs.push_back(host);
    onlyWorld = this;
}

// Work in the queues may own objects of the host, whose destructors call the world.
World::~World() {
    clock.clear();
    mainMenu.reset();
    onlyWorld = nullptr;
}

World& World::current() {
    if (onlyWorld == nullptr)
        abortWith("there is no world; create a simulated::World before you call the platform.");
    return *onlyWorld;
}

World* World::currentOrNull() { return onlyWorld; }

std::chrono::microseconds World::time() const {
    return std::chrono::duration_cast<std::chrono::microseconds>(clock.now().time_since_epoch());
}

void World::after(Seconds delay, std::function<void()> event) { clock.schedule(delay, std::move(event)); }

void World::settle() { runFor(Seconds::zero()); }

void World::runFor(Seconds duration) {
    const TimePoint end = clock.timeAfter(duration);
    while (!hostEnded && clock.step(end)) {
    }
    clock.advanceTo(end);
}

void World::run() {
    while (!hostEnded && clock.step(TimePoint::max())) {
    }
}

bool World::runUntil(const std::function<bool()>& condition, Seconds within) {
    const TimePoint end = clock.timeAfter(within);
    while (!condition()) {
        if (!hostEnded && clock.step(end)) continue;
        clock.advanceTo(end);
        return condition();
    }
    return true;
}

Program& World::openProgram(Description description) {
    auto program = std::make_shared<Program>();
    program->name = std::move(description.name);
    program->localizedName = program->name;
    program->bundleIdentifier = std::move(description.bundleIdentifier);
    program->pid = description.pid != 0 ? description.pid : 1000 + static_cast<pid_t>(programs.size());
    programs.push_back(program);
    return *program;
}

void World::end(Program& program) {
    program.ended = true;
    if (inFront(program)) frontmost = nullptr;
}

void World::bringToFront(Program& program) {
    if (program.ended || inFront(program)) return;
    frontmost = program.shared_from_this();
    note(program.name + " in front");
}

void World::activate(Program& program) {
    note("activation of " + program.name + " requested");
    if (!program.activates) return;
    if (program.activatesAfter <= Seconds::zero()) return bringToFront(program);
    after(program.activatesAfter, [&program] { World::current().bringToFront(program); });
}

Interface& World::interface() const {
    if (interfaces.empty()) abortWith("there is no interface; create a flutter::ViewController first.");
    return *interfaces.back();
}

void World::endHost() {
    hostEnded = true;
    host->ended = true;
    note("terminated");
}

} // namespace simulated
