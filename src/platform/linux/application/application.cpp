#include "platform/application.h"

#include "platform/linux/application/termination.h"
#include "platform/linux/menu/menu_bar.h"
#include "platform/linux/menu/shortcuts.h"
#include "platform/linux/window/main_window.h"
#include "platform/linux/window/native_window.h"

#include <utility>

namespace platform {
namespace {

struct State {
    std::unique_ptr<Menu> mainMenu;
    std::unique_ptr<MenuBar> menuBar;
    Glib::RefPtr<Gtk::AccelGroup> shortcuts;
};

State& state() {
    static State only;
    return only;
}

void placeMenuBar() {
    const auto window = mainWindow();
    if (!window || !state().menuBar) return;
    window->native().setMenuBar(*state().menuBar);
    window->native().window.add_accel_group(state().shortcuts);
}

} // namespace

Application& Application::sharedApplication() {
    static Application application;
    return application;
}

ApplicationDelegate* Application::delegate() const { return Termination::shared().delegate; }

void Application::setDelegate(ApplicationDelegate* delegate) { Termination::shared().delegate = delegate; }

Menu* Application::mainMenu() const { return state().mainMenu.get(); }

void Application::setMainMenu(std::unique_ptr<Menu> menu) {
    const auto window = mainWindow();
    if (window && state().shortcuts) window->native().window.remove_accel_group(state().shortcuts);
    state().shortcuts.reset();
    state().menuBar.reset();
    state().mainMenu = std::move(menu);
    if (!state().mainMenu) return;
    state().menuBar = std::make_unique<MenuBar>(*state().mainMenu);
    state().shortcuts = makeShortcuts(*state().mainMenu);
    placeMenuBar();
}

void Application::activate() {
    const auto window = mainWindow();
    if (window && window->native().isVisible()) window->native().presence.show();
}

void Application::terminate() { Termination::shared().askedByPerson(); }

void Application::replyToApplicationShouldTerminate(bool shouldTerminate) {
    Termination::shared().settle(shouldTerminate ? ApplicationTerminateReply::terminateNow
                                                 : ApplicationTerminateReply::terminateCancel);
}

} // namespace platform
