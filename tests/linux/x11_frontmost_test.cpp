#include "linux/run_until.h"
#include "platform/linux/interface/process.h"
#include "platform/linux/x11/base/server_grab.h"
#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/activation.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/workspace.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/key_window.h"

#include <X11/Xlib.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace platform {
namespace {

std::optional<RunningApplication> front() { return Workspace::sharedWorkspace().frontmostApplication(); }

struct Frontmost : testing::Test {
    testbed::Desktop desktop;
};

TEST_F(Frontmost, IsAbsentWhileTheFocusIsNotWithTheActiveWindow) {
    auto* connection = x11::XlibConnection::shared();
    // A window that the window manager does not manage, as launchers have.
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    const ::Window popup =
        XCreateWindow(connection->display(), connection->root(), 0, 0, 10, 10, 0, CopyFromParent, InputOutput,
                      CopyFromParent, CWOverrideRedirect, &attributes);
    XMapWindow(connection->display(), popup);
    for (const ::Window focus : {popup, ::Window{None}}) {
        const testbed::Fields program(desktop, {"entry"});
        ASSERT_TRUE(front());
        const x11::ServerGrab grab; // Window managers give the focus back.
        XSetInputFocus(connection->display(), focus, RevertToPointerRoot, CurrentTime);
        EXPECT_FALSE(front()) << focus;
    }
    XDestroyWindow(connection->display(), popup);
}

TEST_F(Frontmost, IsNeverAbsentWhileTheFocusMovesToAnotherProgram) {
    const testbed::Fields first(desktop, {"entry"});
    const auto firstApplication = front();
    const testbed::Fields second(desktop, {"entry"});
    const auto secondApplication = front();
    ASSERT_TRUE(firstApplication && secondApplication);
    for (int turn = 0; turn < 20; ++turn) {
        const auto& next = turn % 2 == 0 ? *firstApplication : *secondApplication;
        next.activateFromApplication(RunningApplication::currentApplication());
        EXPECT_TRUE(runUntil([&] {
            const auto application = front();
            EXPECT_TRUE(application) << turn;
            return application == next;
        }));
    }
}

TEST_F(Frontmost, NoOtherWindowOfAProgramPassesForTheOneThatIsToCome) {
    const testbed::KeyWindow first;
    ASSERT_TRUE(runUntil([] { return x11::frontWindow().has_value(); }));
    const auto wanted = x11::frontWindow();
    const testbed::KeyWindow second;
    ASSERT_TRUE(runUntil([&] { return x11::frontWindow() && x11::frontWindow() != wanted; }));
    ASSERT_TRUE(x11::activateWindow(wanted->window));
    EXPECT_TRUE(runUntil([] { return x11::frontWindow().has_value(); }));
    EXPECT_EQ(x11::frontWindow(), wanted);
}

TEST_F(Frontmost, IsKnownByItsDesktopFile) {
    const char* data = std::getenv("XDG_DATA_HOME");
    ASSERT_TRUE(data) << "it would write into the user's own folder: use script/virtual-desktop";
    const auto folder = std::filesystem::path(data) / "applications";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "org.example.Letters.desktop")
        << "[Desktop Entry]\nType=Application\nName=Letters\nStartupWMClass=LettersWindow\nExec=true\n"
           "[Desktop Action new]\nName=New\nStartupWMClass=action\n";
    std::ofstream(folder / "notes.desktop")
        << "[Desktop Entry]\nType=Application\nName=My Notes\nExec=true\n";
    using Names = std::array<const char*, 3>;
    for (const auto& [windowClass, identity, name] :
         {Names{"letterswindow", "org.example.Letters", "Letters"}, Names{"Notes", "notes", "My Notes"},
          Names{"action", "action", "action"}}) {
        testbed::Fields program(desktop, {"entry"});
        testbed::setWindowClass(x11::XlibConnection::shared()->display(), *desktop.activeWindow(),
                                windowClass);
        const auto application = front();
        ASSERT_TRUE(application);
        EXPECT_EQ(application->processIdentifier(), program.process().pid());
        EXPECT_TRUE(runUntil([&, wanted = identity] { return application->bundleIdentifier() == wanted; }))
            << application->bundleIdentifier().value_or("") << " is not " << identity;
        EXPECT_EQ(application->localizedName().value_or(""), name);
    }
}

TEST_F(Frontmost, IsTheHostWhileAWindowOfItsInterfaceIsInFront) {
    std::string whyNot;
    const auto interface = InterfaceProcess::start(
        {"/bin/sh", "-c", "exec xterm"}, {std::string("DISPLAY=") + std::getenv("DISPLAY")}, [] {}, whyNot);
    ASSERT_TRUE(interface) << whyNot;
    EXPECT_TRUE(runUntil([] { return front() == RunningApplication::currentApplication(); }));
    interface->end({});
}

} // namespace
} // namespace platform
