#include "testing/soak/restarts.h"

#include <csignal>

namespace soak {

namespace {

void restartAProgram(World& world, Chance& chance) { chance.from(world.programs)->restart(chance); }

void replaceTheWindowManager(World& world, Chance& chance) {
    static constexpr std::array managers{"openbox", "metacity", "xfwm4"};
    const std::string name = chance.from(managers);
    world.note(name);
    const auto before = world.desktop.windowManager();
    const auto former = std::move(world.windowManager);
    world.windowManager = std::make_unique<testbed::Process>(std::vector<std::string>{name, "--replace"});
    const bool replaced = testbed::waitUntil([&] {
        const auto now = world.desktop.windowManager();
        return now && now != before;
    });
    if (!replaced) world.fault(name + " does not take over: " + world.windowManager->output());
}

} // namespace

void restartTheHost(World& world, Chance& chance) {
    auto& host = *world.host;
    switch (chance.below(4)) {
    case 0:
        world.note("the interface ends");
        host.exitInterface(3);
        break;
    case 1:
        world.note("the interface closes its connection");
        host.disconnect();
        break;
    case 2:
        world.note("the interface quits");
        host.startCall("quit");
        break;
    default:
        world.note("the host is killed");
        host.process().signal(SIGKILL);
    }
    if (!host.process().exitStatus()) world.fault("the host does not end");
    world.copied.isUnknown();
    world.startHost();
}

std::vector<Step> restartSteps() {
    return {{"restart a program", 3, restartAProgram},
            {"replace the window manager", 2, replaceTheWindowManager}};
}

} // namespace soak
