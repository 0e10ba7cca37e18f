#include "linux/x11_programs.h"
#include "platform/linux/x11_connection.h"
#include "platform/workspace.h"

#include <X11/Xlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace platform::x11test {
namespace {

std::optional<RunningApplication> front() { return Workspace::sharedWorkspace().frontmostApplication(); }

bool comesToFront(const Program& program) {
    return runUntil([&] {
        const auto application = front();
        return application && application->processIdentifier() == program.process();
    });
}

class Frontmost : public testing::Test {
protected:
    void SetUp() override {
        if (!hasDisplay()) GTEST_SKIP() << "no display";
        auto* connection = x11::Connection::shared();
        if (connection->values(connection->root(), connection->atom("_NET_SUPPORTING_WM_CHECK")).empty())
            GTEST_SKIP() << "no window manager";
    }
};

TEST_F(Frontmost, IsTheProgramOfTheActiveWindowAndComesBackWhenAsked) {
    const Program first("Quillpad", "first");
    ASSERT_TRUE(comesToFront(first));
    const RunningApplication application = *front();
    EXPECT_EQ(application.bundleIdentifier(), "Quillpad");
    EXPECT_EQ(application.localizedName(), "Quillpad");

    Program second("other", "second");
    ASSERT_TRUE(comesToFront(second));
    const RunningApplication other = *front();
    EXPECT_FALSE(other == application);
    EXPECT_FALSE(other == RunningApplication::currentApplication());
    EXPECT_FALSE(RunningApplication::currentApplication().isTerminated());

    EXPECT_TRUE(application.activateFromApplication(RunningApplication::currentApplication()));
    ASSERT_TRUE(comesToFront(first));
    EXPECT_EQ(*front(), application);

    second.end();
    EXPECT_TRUE(other.isTerminated());
    EXPECT_FALSE(other.activateFromApplication(application));
    EXPECT_FALSE(application.isTerminated());
}

TEST_F(Frontmost, IsTheHostItselfWithAWindowOfItsOwn) {
    const KeyWindow window;
    EXPECT_TRUE(runUntil([] { return front() == RunningApplication::currentApplication(); }));
}

TEST_F(Frontmost, IsAbsentWhileTheFocusIsNotWithTheActiveWindow) {
    const Program program("editor", "editor");
    ASSERT_TRUE(comesToFront(program));
    auto* connection = x11::Connection::shared();
    // A window that the window manager does not manage, as launchers have.
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    const ::Window popup =
        XCreateWindow(connection->display(), connection->root(), 0, 0, 10, 10, 0, CopyFromParent, InputOutput,
                      CopyFromParent, CWOverrideRedirect, &attributes);
    XMapWindow(connection->display(), popup);
    for (const ::Window focus : {popup, ::Window{None}}) {
        XSetInputFocus(connection->display(), focus, RevertToPointerRoot, CurrentTime);
        EXPECT_EQ(front(), std::nullopt) << focus;
        XSetInputFocus(connection->display(), x11::activeWindow(), RevertToPointerRoot, CurrentTime);
        EXPECT_TRUE(comesToFront(program));
    }
    XDestroyWindow(connection->display(), popup);
}

TEST_F(Frontmost, IsKnownByItsDesktopFile) {
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
        ASSERT_TRUE(comesToFront(program));
        EXPECT_EQ(front()->bundleIdentifier(), identity);
        EXPECT_EQ(front()->localizedName(), name);
    }
}

TEST(OpenUrl, IsFalseWithoutAProgramForItOrWithoutTheFile) {
    const Workspace& workspace = Workspace::sharedWorkspace();
    EXPECT_FALSE(workspace.openURL(*URL::URLWithString("quillmark-nobody-knows-this:x")));
    EXPECT_FALSE(workspace.openURL(URL::fileURLWithPath("/nowhere/at/all.txt")));
}

} // namespace
} // namespace platform::x11test
