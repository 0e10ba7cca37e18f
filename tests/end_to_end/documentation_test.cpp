// The interface printed in docs/writing-an-interface.md, as a reader would use it.
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"

#include <gmock/gmock.h>

using namespace testbed;

namespace {

bool prints(const Process& process, const std::string& words) {
    return waitUntil([&] { return process.output().find(words) != std::string::npos; });
}

TEST(Documentation, ItsInterfaceWorksAsPrinted) {
    const std::string page = readFile(QUILLMARK_DOCS "/writing-an-interface.md");
    const std::string fence = "```python\n";
    const auto start = page.find(fence) + fence.size();
    TemporaryFolder folder;
    writeFile(folder / "shout.py", page.substr(start, page.find("```\n", start) - start));

    Desktop desktop;
    Process host({hostProgram(), "python3", (folder / "shout.py").string()});
    ASSERT_TRUE(prints(host, "hot key: True")) << host.output();
    Fields fields(desktop, {"entry=one two three"});
    fields.command("select 0 4 7");
    desktop.keyboard.press("Alt+Shift+space");
    EXPECT_TRUE(prints(host, "the answer is pasted")) << host.output();
    fields.awaitText("one TWO three");
}

} // namespace
