// What --check says of this desktop.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/key_grab.h"
#include "testing/desktop/process.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

using namespace testbed;

namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr unsigned altShift = 1 << 3 | 1 << 0; // Mod1Mask and ShiftMask
constexpr int degraded = 4, missing = 5;

struct Checked {
    int status;
    std::string text;

    // The line of that name, with its grade before it, and its sentences in the lines below.
    std::string line(const std::string& name) const {
        const auto middle = text.find(' ' + name + ' ');
        if (middle == std::string::npos) return "no line " + name;
        const auto start = text.rfind('\n', middle) + 1;
        auto end = text.find('\n', middle);
        while (end + 1 < text.size() && text[end + 1] == ' ')
            end = text.find('\n', end + 1);
        return text.substr(start, end - start);
    }
};

Checked check(const std::map<std::string, std::string>& environment = {},
              const std::vector<std::string>& words = {}) {
    std::vector<std::string> command{hostProgram(), "--check"};
    command.insert(command.end(), words.begin(), words.end());
    Process program(command, environment);
    const int status = program.exitStatus().value_or(-1);
    return {status, program.output()};
}

TEST(HostCheck, NamesWhatIsNotThere) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "quillmark");
    fs::permissions(folder / "quillmark", fs::perms::all);
    const struct {
        const char* line;
        const char* said;
        int status;
        std::map<std::string, std::string> environment;
        std::vector<std::string> words;
    } cases[] = {
        {"display server", "Start it inside a desktop session", missing, {{"DISPLAY", ""}}, {}},
        {"window manager", "needs a display", missing, {{"DISPLAY", ""}}, {}},
        {"session bus",
         "dbus-run-session",
         missing,
         {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}},
         {}},
        {"accessibility",
         "waits on the pasteboard",
         missing,
         {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}},
         {}},
        {"interface", "no program \"no-such\"", missing, {}, {"no-such"}},
        {"files", "are not kept", degraded, {{"XDG_CONFIG_HOME", "/dev/null"}}, {"/bin/true"}},
        {"files", "chmod go-w", degraded, {{"XDG_CONFIG_HOME", folder / ""}}, {"/bin/true"}},
        {"clipboard manager", "is lost", degraded, {}, {"/bin/true"}},
    };
    for (const auto& [line, said, status, environment, words] : cases) {
        const auto found = check(environment, words);
        EXPECT_THAT(
            found.line(line),
            testing::AllOf(testing::StartsWith(status == missing ? "missing" : "degraded"), HasSubstr(said)))
            << found.text;
        EXPECT_EQ(found.status, status) << line;
    }
}

TEST(HostCheck, SaysWhoHasTheHotKey) {
    EXPECT_THAT(check().line("hot key"), HasSubstr("Alt+Shift+Space is free"));
    {
        const KeyGrab other("space", altShift);
        const TemporaryFolder settings;
        fs::create_directories(settings / "openbox");
        writeFile(settings / "openbox/rc.xml", R"(<keybind key="A-S-space"/>)");
        const auto found = check({{"XDG_CONFIG_HOME", settings / ""}});
        EXPECT_EQ(found.status, missing);
        EXPECT_THAT(found.line("hot key"),
                    HasSubstr("belongs to Openbox (" + (settings / "openbox/rc.xml").string()));

        Host host;
        EXPECT_THAT(check().line("hot key"), HasSubstr("has not asked for one"));
        host.call("initialize");
        EXPECT_THAT(check().line("hot key"), HasSubstr("belongs to another program"));
    }
    Host host;
    host.call("initialize");
    EXPECT_THAT(check().line("hot key"), HasSubstr("Alt+Shift+Space is the host's"));
    EXPECT_THAT(check().line("host"), HasSubstr(std::to_string(host.process().pid())));
    Process pause({hostProgram(), "--pause"});
    EXPECT_EQ(pause.exitStatus(), 0);
    EXPECT_THAT(check().line("hot key"), HasSubstr("quillmark-host --pause"));
    host.process().signal(SIGSTOP);
    EXPECT_THAT(check().line("host"), HasSubstr("kill -KILL " + std::to_string(host.process().pid())));
    host.process().signal(SIGCONT);
}

// The interface's settings show it.
TEST(HostCheck, GivesProgramsJson) {
    const auto found = check({}, {"--json", "no-such"});
    EXPECT_EQ(found.status, missing);
    EXPECT_THAT(found.text, testing::StartsWith(R"({"worst":"missing","checks":[{"name":"display-server",)"));
    EXPECT_THAT(found.text, HasSubstr(R"({"name":"interface","grade":"missing","found":")"));
    EXPECT_THAT(found.text, HasSubstr(R"("meaning":"There is no program \"no-such\".","mend":"Give )"));
}

} // namespace
