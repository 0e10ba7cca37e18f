#include "platform/application.h"

#include "platform/simulated/world.h"

#include <algorithm>

namespace platform {

using simulated::World;

Application& Application::sharedApplication() {
    static Application application;
    return application;
}

ApplicationDelegate* Application::delegate() const { return World::current().applicationDelegate; }
void Application::setDelegate(ApplicationDelegate* delegate) {
    World::current().applicationDelegate = delegate;
}

Menu* Application::mainMenu() const { return World::current().mainMenu.get(); }
void Application::setMainMenu(std::unique_ptr<Menu> menu) { World::current().mainMenu = std::move(menu); }

void Application::activate() {
    World& world = World::current();
    world.activate(*world.host);
}

void Application::terminate() {
    World& world = World::current();
    if (world.hostEnded) return;
    const auto reply = world.applicationDelegate != nullptr
                           ? world.applicationDelegate->applicationShouldTerminate()
                           : ApplicationTerminateReply::terminateNow;
    world.terminateReplies.push_back(reply);
    world.terminationPending = reply == ApplicationTerminateReply::terminateLater;
    if (reply == ApplicationTerminateReply::terminateNow) world.endHost();
}

void Application::replyToApplicationShouldTerminate(bool shouldTerminate) {
    World& world = World::current();
    world.settledTerminations.push_back(shouldTerminate);
    if (!world.terminationPending) return;
    world.terminationPending = false;
    if (shouldTerminate) world.endHost();
}

int ApplicationMain(int, char**, const std::function<MainInterface()>& load) {
    World& world = World::current();
    Application& application = Application::sharedApplication();
    MainInterface interface = load();
    application.setDelegate(interface.delegate.get());
    application.setMainMenu(std::move(interface.mainMenu));
    if (interface.mainWindow) {
        interface.mainWindow->awakeFromNib();
        interface.mainWindow->makeKeyAndOrderFront();
    }
    world.bringHostToFront();
    world.run();
    application.setDelegate(nullptr);
    application.setMainMenu(nullptr);
    return 0;
}

} // namespace platform

namespace simulated {

void World::userQuits() {
    clock.async([] { platform::Application::sharedApplication().terminate(); });
}

void World::terminationIsWithdrawn() {
    clock.async([this] {
        terminationPending = false;
        if (applicationDelegate != nullptr) applicationDelegate->applicationTerminationWithdrawn();
    });
}

void World::userAsksForCapture() {
    clock.async([this] {
        if (applicationDelegate != nullptr) applicationDelegate->applicationShouldHandleCapture();
    });
}

void World::userReopensHost() {
    clock.async([this] {
        const bool visible = std::ranges::any_of(hostWindows, [](auto* window) {
            return window->native().visible && !window->native().miniaturized;
        });
        if (applicationDelegate != nullptr) applicationDelegate->applicationShouldHandleReopen(visible);
    });
}

} // namespace simulated
