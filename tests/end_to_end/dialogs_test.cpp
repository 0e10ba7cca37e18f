// What the host says in dialogs when it was started from the desktop's menu or at login.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/process.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

using namespace testbed;

namespace {

using testing::HasSubstr;

struct HostDialogs : testing::Test {
    // Waits for the program's dialog and presses a key in it.
    void answer(Process& program, const char* key) {
        std::vector<WindowId> shown;
        ASSERT_TRUE(waitUntil([&] {
            shown = desktop.windows(program.pid());
            return shown.size() == 1 && desktop.title(shown.front()) == "Quillmark";
        })) << program.output();
        ASSERT_TRUE(desktop.activate(shown.front()));
        if (const char* pictures = std::getenv("QUILLMARK_PICTURES"))
            desktop.screenshot(std::filesystem::path(pictures) / (std::to_string(picture++) + ".png"));
        desktop.keyboard.press(key);
    }

    int picture = 0;
    Desktop desktop;
    const TemporaryFolder folder;
};

TEST_F(HostDialogs, AfterACrashOfTheInterfaceItStartsAgainAsAFreshHostOrEndsWithTheInterfacesStatus) {
    const std::string runs = folder / "runs";
    // As GIO starts the program of a desktop entry.
    Process host({"/bin/sh", "-c", R"(GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec "$@")", "sh", hostProgram(),
                  "/bin/sh", "-c", R"(echo "$QUILLMARK_SOCKET" >>"$0"; exit 5)", runs});
    const auto sockets = [&] { return readFile(runs); };
    answer(host, "Return");
    ASSERT_TRUE(waitUntil([&] { return std::ranges::count(sockets(), '\n') == 2; }));
    const std::string first = sockets().substr(0, sockets().find('\n'));
    EXPECT_NE(sockets(), first + "\n" + first + "\n") << "not a fresh host";
    answer(host, "Escape");
    EXPECT_EQ(host.exitStatus(), 5);
    EXPECT_THAT(host.output(), HasSubstr("ended with status 5"));
}

TEST_F(HostDialogs, SayWhatIsMissingAndOfferToEndAHostThatHangs) {
    Process lacksInterface({hostProgram(), "--dialogs", "no-such-program"});
    answer(lacksInterface, "Escape");
    EXPECT_EQ(lacksInterface.exitStatus(), 1);

    auto hanging = std::make_unique<Host>();
    hanging->process().signal(SIGSTOP);
    Process second({hostProgram(), "--dialogs", "/bin/sh", "-c", "exit 0"});
    answer(second, "Return");
    EXPECT_EQ(second.exitStatus(), 0);
    EXPECT_EQ(hanging->process().exitStatus(), 128 + SIGKILL);

    Host other;
    Process third({hostProgram(), "--dialogs", "/bin/false"});
    answer(third, "Return");
    EXPECT_EQ(third.exitStatus(), 0);
    EXPECT_THAT(third.output(), HasSubstr("quit it first to start /bin/false"));
}

} // namespace
