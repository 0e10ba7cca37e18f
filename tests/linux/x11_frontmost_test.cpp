#include "linux/x11_programs.h"
#include "platform/linux/interface_process.h"
#include "platform/linux/x11_connection.h"
#include "platform/workspace.h"

#include <X11/Xlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace platform::x11test {
namespace {

std::optional<RunningApplication> front() { return Workspace::sharedWorkspace().frontmostApplication(); }

// A new program once it is in front; absent, failing the test, when it never is.
std::optional<RunningApplication> inFront(const Program& program) {
    std::optional<RunningApplication> application;
    EXPECT_TRUE(runUntil([&] {
        application = front();
        return application && application->processIdentifier() == program.process();
    }));
    return application;
}

TEST(Frontmost, IsAbsentWhileTheFocusIsNotWithTheActiveWindow) {
    auto* connection = x11::Connection::shared();
    // A window that the window manager does not manage, as launchers have.
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    const ::Window popup =
        XCreateWindow(connection->display(), connection->root(), 0, 0, 10, 10, 0, CopyFromParent, InputOutput,
                      CopyFromParent, CWOverrideRedirect, &attributes);
    XMapWindow(connection->display(), popup);
    for (const ::Window focus : {popup, ::Window{None}}) {
        const Program program("editor", "editor");
        ASSERT_TRUE(inFront(program));
        EXPECT_TRUE(runUntil([&] { // the window manager may still be busy giving it to the program
            XSetInputFocus(connection->display(), focus, RevertToPointerRoot, CurrentTime);
            return !front();
        })) << focus;
    }
    XDestroyWindow(connection->display(), popup);
}

TEST(Frontmost, IsKnownByItsDesktopFile) {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data == nullptr) GTEST_SKIP() << "would write into the user's own folder";
    const auto folder = std::filesystem::path(data) / "applications";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "org.example.Letters.desktop")
        << "[Desktop Entry]\nType=Application\nName=Letters\nStartupWMClass=LettersWindow\nExec=true\n"
           "[Desktop Action new]\nName=New\nStartupWMClass=action\n";
    std::ofstream(folder / "notes.desktop")
        << "[Desktop Entry]\nType=Application\nName=My Notes\nExec=true\n";
    struct Case {
        const char* windowClass;
        const char* identity;
        const char* name;
    };
    for (const auto& [windowClass, identity, name] :
         {Case{"letterswindow", "org.example.Letters", "Letters"}, Case{"Notes", "notes", "My Notes"},
          Case{"action", "action", "action"}}) {
        const Program program(windowClass, "window");
        const auto application = inFront(program);
        ASSERT_TRUE(application);
        EXPECT_EQ(application->bundleIdentifier().value_or(""), identity);
        EXPECT_EQ(application->localizedName().value_or(""), name);
    }
}

TEST(Frontmost, IsTheHostWhileAWindowOfItsInterfaceIsInFront) {
    const Program program("settings", "settings");
    ASSERT_TRUE(inFront(program));
    const InterfaceProcess interface(program.process(), [] {});
    EXPECT_EQ(front(), RunningApplication::currentApplication());
}

} // namespace
} // namespace platform::x11test
