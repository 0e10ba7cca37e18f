// The interfaces printed in docs/writing-an-interface.md, as a reader would use them.
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"
#include "testing/desktop/screen_reader.h"

#include <gmock/gmock.h>

using namespace testbed;
using testing::HasSubstr;

namespace {

const std::string page = readFile(QUILLMARK_DOCS "/writing-an-interface.md");

bool prints(const Process& process, const std::string& words) {
    return waitUntil([&] { return process.output().find(words) != std::string::npos; });
}

// The page's program in that language, the first or a later one.
std::string printed(const std::string& language, int number = 1) {
    const std::string fence = "```" + language + "\n";
    std::size_t start = 0;
    for (int i = 0; i < number; ++i)
        start = page.find(fence, start) + fence.size();
    return page.substr(start, page.find("```\n", start) - start);
}

// Whether the machine has what such a program needs.
bool runs(const std::vector<std::string>& command) { return Process(command).exitStatus() == 0; }

struct Documentation : testing::Test {
    void start(const std::vector<std::string>& interface) {
        std::vector<std::string> command{hostProgram()};
        command.insert(command.end(), interface.begin(), interface.end());
        host.emplace(command);
        ASSERT_TRUE(prints(*host, "hot key: ")) << host->output();
    }
    void capture() {
        fields.emplace(desktop, std::vector<std::string>{"entry=one two three"});
        fields->command("select 0 4 7");
        desktop.keyboard.press("Alt+Shift+space");
    }

    TemporaryFolder folder;
    Desktop desktop;
    std::optional<Process> host;
    std::optional<Fields> fields;
};

TEST_F(Documentation, ItsInterfacesWorkAsPrinted) {
    const struct {
        const char *language, *program, *file;
    } table[]{{"python", "python3", "shout.py"}, {"js", "node", "shout.js"}};
    for (const auto& [language, program, file] : table) {
        if (!runs({program, "--version"})) continue;
        writeFile(folder / file, printed(language));
        start({program, folder / file});
        capture();
        EXPECT_TRUE(prints(*host, "the answer is pasted")) << host->output();
        fields->awaitText("one TWO three");
        host.reset();
    }
}

TEST_F(Documentation, ItsViewWorksAsPrinted) {
    constexpr auto python = "/usr/bin/python3"; // Debian's own has GTK
    if (!runs({python, "-c", "import gi; gi.require_version('Gtk', '3.0')"}))
        GTEST_SKIP() << "no GTK for Python";
    writeFile(folder / "shout.py", printed("python"));
    writeFile(folder / "view.py", printed("python", 2));
    start({python, folder / "view.py"});
    capture();
    ScreenReader screen(host->pid());
    ASSERT_TRUE(waitUntil([&] { return screen.text("text", "") == "TWO"; })) << host->output();
    ASSERT_TRUE(waitUntil([&] { return screen.isFocused("text", ""); }));
    desktop.keyboard.press("Control+a"); // which would end the selection in the field
    screen.press("push button", "Apply");
    EXPECT_TRUE(prints(*host, "the answer is pasted")) << host->output();
    fields->awaitText("one TWO three");
}

// Which tests/client_package builds and runs.
TEST(ClientLibrary, IsShownAsItIsTried) {
    EXPECT_THAT(page, HasSubstr(readFile(QUILLMARK_DOCS "/../tests/client_package/consumer/main.cpp")));
}

} // namespace
