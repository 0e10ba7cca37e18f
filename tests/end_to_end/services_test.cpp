// What the host does for the interface outside its window, as the programs concerned see it.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/process.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableValue;

const CallOutcome null = EncodableValue();

CallOutcome error(const char* code, const char* message) { return flutter::FlutterError{code, message, {}}; }

// A machine with one program, for plain text, pages and https, which notes what it inherits and is given to
// open.
struct SparseMachine {
    SparseMachine() {
        std::filesystem::create_directories(folder / "applications");
        std::filesystem::create_symlink("/usr/share/mime", folder / "mime");
        const auto program = folder / "applications/note.sh";
        const std::string opened = (folder / "opened").string();
        writeFile(program, "#!/bin/sh\n"
                           "printf '%s\\n' \"limit $(ulimit -n)\" \"session $(cut -d' ' -f6 /proc/$$/stat)\" "
                           "\"variables $(env | grep -c ^QUILLMARK_)\" \"$1\" >>" +
                               opened + "\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        writeFile(folder / "applications/note.desktop",
                  "[Desktop Entry]\nType=Application\nName=Note\nExec=" + program.string() +
                      " %u\nMimeType=text/plain;text/html;x-scheme-handler/https;\n");
        writeFile(folder / "applications/mimeinfo.cache",
                  "[MIME Cache]\ntext/plain=note.desktop;\ntext/html=note.desktop;\n"
                  "x-scheme-handler/https=note.desktop;\n");
        writeFile(folder / "letter.txt", "Dear Anna");
    }

    bool hasOpened(const std::string& what) {
        return readFile(folder / "opened").find(what + "\n") != std::string::npos;
    }
    bool opened(const std::string& what) {
        return waitUntil([&] { return hasOpened(what); });
    }

    TemporaryFolder folder;
};

struct HostOpens : testing::Test, SparseMachine {
    Desktop desktop;
    Host host{{{"XDG_DATA_HOME", folder / ""}, {"XDG_DATA_DIRS", folder / ""}}};
};

TEST_F(HostOpens, FilesAndLinksWithTheProgramForThemAndSaysWhenThereIsNone) {
    EXPECT_EQ(host.call("openUrl", "https://example.org/"), null);
    EXPECT_TRUE(opened("https://example.org/"));
    EXPECT_EQ(host.call("openUrl", "mailto:anna@example.org"), error("open_url", "Could not open the link"));

    EXPECT_EQ(host.call("openPath", (folder / "letter.txt").string()), null);
    EXPECT_TRUE(opened("letter.txt"));
    const auto noSuchFile = error("open_path", "Could not open the file or folder");
    EXPECT_EQ(host.call("openPath", (folder / "gone.txt").string()), noSuchFile);
    EXPECT_EQ(host.call("openPath", (folder / "").string()), noSuchFile) << "no program opens folders here";
}

TEST(OpenedProgram, InheritsNothingThatTheHostSetForItself) {
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    const rlimit fewer{files.rlim_cur / 2, files.rlim_max};
    setrlimit(RLIMIT_NOFILE, &fewer);
    SparseMachine machine;
    Host host{{{"XDG_DATA_HOME", machine.folder / ""},
               {"XDG_DATA_DIRS", machine.folder / ""},
               {"QUILLMARK_SOCKET", "of an interface that started the host"}}};
    setrlimit(RLIMIT_NOFILE, &files);
    host.call("openUrl", "https://example.org/");
    EXPECT_TRUE(machine.opened("https://example.org/"));
    EXPECT_TRUE(machine.opened("limit " + std::to_string(fewer.rlim_cur)));
    EXPECT_TRUE(machine.opened("variables 0"));
    EXPECT_FALSE(machine.hasOpened("session " + std::to_string(getsid(host.process().pid()))));
}

TEST_F(HostOpens, ItsHelpFromTheMenu) {
    host.bringToFront(desktop);
    for (const char* key : {"F10", "Left", "Down", "Return"})
        desktop.keyboard.press(key);
    EXPECT_TRUE(opened("docs/help.html"));
}

TEST(HostServices, AskingForPermissionTurnsAccessibilityOnWhereItIsOff) {
    const auto status = [](const std::string& method, const std::string& value) {
        std::vector<std::string> command{
            "gdbus",           "call",         "--session",
            "--dest",          "org.a11y.Bus", "--object-path",
            "/org/a11y/bus",   "--method",     "org.freedesktop.DBus.Properties." + method,
            "org.a11y.Status", "IsEnabled"};
        if (!value.empty()) command.push_back(value);
        Process asked(command);
        asked.exitStatus();
        return asked.output();
    };
    Host host;
    status("Set", "<false>");
    ASSERT_EQ(status("Get", ""), "(<false>,)\n");
    EXPECT_EQ(host.call("requestPermission"), null);
    EXPECT_EQ(status("Get", ""), "(<true>,)\n");
}

} // namespace
