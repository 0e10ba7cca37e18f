// The settings, changed as a person changes them; what is chosen counts at once and after a restart.
#include "interface/writer.h"
#include "testing/desktop/host.h"
#include "testing/desktop/key_grab.h"

#include <X11/X.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace testbed {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

struct SettingsPage : Writer {
    void SetUp() override {
        start();
        open();
    }
    void open() {
        press("Control+comma");
        ASSERT_TRUE(screen().shows("push button", "Help"));
        desktop.resize(window(), 700, 1400); // nothing is scrolled out of sight
    }
    bool kept(const std::string& line) {
        return comes([&] {
            return readFile(folder / "config/quillmark/interface.conf").find(line + "\n") !=
                   std::string::npos;
        });
    }
    // The button with the hot key, and then the keys.
    void record(const std::string& now, const std::string& keys) {
        screen().press("push button", "Change the hot key, now " + now);
        ASSERT_TRUE(screen().shows("push button", "Press the new keys, or Esc …"));
        press(keys);
    }
};

TEST_F(SettingsPage, TakesAnotherHotKeyAndKeepsIt) {
    const KeyGrab another("j", ControlMask | Mod1Mask);
    EXPECT_THAT(screen().unnamed(), IsEmpty());
    record("Alt+Shift+Space", "Control+Alt+j");
    EXPECT_TRUE(
        screen().shows("label", "Another program holds Ctrl+Alt+J, so Alt+Shift+Space stays the hot key."));
    record("Alt+Shift+Space", "j");
    EXPECT_TRUE(screen().shows("label",
                               "Hold Ctrl, Alt or Super with the key: it would be missed wherever you "
                               "write, otherwise."));
    record("Alt+Shift+Space", "Control+Alt+k");
    EXPECT_TRUE(screen().shows("push button", "Change the hot key, now Ctrl+Alt+K"));

    end();
    start({});
    model.answers("I know it");
    write("i knwo it");
    press("Control+Alt+k");
    EXPECT_TRUE(rewritten("I know it")) << host->output();
}

TEST_F(SettingsPage, SortsInstructionsAndWritesNewOnes) {
    screen().press("push button", "Move Shorten up");
    EXPECT_TRUE(kept("name=Shorten"));
    screen().press("push button", "New instruction");
    ASSERT_TRUE(hasKeyboard("text", "Name"));
    EXPECT_THAT(screen().unnamed(), IsEmpty());
    EXPECT_FALSE(screen().isSensitive("push button", "No key"));
    type("pirate");
    screen().setText("text", "What the model is told", "Like a pirate.");
    press("Control+Return");
    ASSERT_TRUE(screen().shows("push button", "Edit pirate"));

    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(rewritten("I know it"));
    EXPECT_THAT(model.request(), HasSubstr("half as long")) << "the first instruction is not the one used";
    screen().press("toggle button", "pirate");
    EXPECT_TRUE(comes([&] { return model.request().find("Like a pirate.") != std::string::npos; }));
}

TEST_F(SettingsPage, ExcludesAProgramThatWasUsedLately) {
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(rewritten("I know it"));
    ASSERT_TRUE(hasKeyboard("text", "Rewrite"));
    open();
    screen().press("push button", "Excluded programs: Add …");
    ASSERT_TRUE(hasKeyboard("text", "Search"));
    EXPECT_THAT(screen().unnamed(), IsEmpty());
    press("Escape");
    screen().press("push button", "Excluded programs: Add …");
    ASSERT_TRUE(hasKeyboard("text", "Search"));
    press("Return");
    EXPECT_TRUE(screen().shows("push button", "Remove Gtk_fields"));
    EXPECT_TRUE(kept("_fields;"));
}

TEST_F(SettingsPage, ChoosesAModelServerAndStartsAtLogin) {
    const std::map<std::string, std::string> fromItsFile{{"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "0"},
                                                         {"OPENAI_BASE_URL", ""}};
    end();
    start({}, fromItsFile);
    open();
    screen().press("radio button", "Use this server:");
    screen().setText("text", "Address", "127.0.0.1:1");
    screen().press("push button", "Use this server");
    EXPECT_TRUE(comes([&] { return !screen().shows("label", "Looking …", milliseconds(0)); }));
    screen().setText("text", "Address", model.address());
    screen().setText("password text", "Access key", "secret");
    screen().press("push button", "Use this server");
    const auto server = model.address().substr(7, model.address().rfind('/') - 7);
    EXPECT_TRUE(screen().shows("label", "m, on this computer (" + server + ")"));
    EXPECT_THAT(readFile(folder / "config/quillmark/language-model.conf"), HasSubstr("key=secret"));

    const auto entry = folder / "config/autostart/quillmark-host.desktop";
    screen().press("check box", "Start when I log in");
    EXPECT_TRUE(comes([&] { return readFile(entry).find("Hidden=false\n") != std::string::npos; }));
    screen().press("check box", "Start when I log in");
    EXPECT_TRUE(comes([&] { return readFile(entry).find("Hidden=true\n") != std::string::npos; }));

    end();
    start({}, fromItsFile);
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    EXPECT_TRUE(rewritten("I know it")) << host->output();
    EXPECT_THAT(model.request(), HasSubstr("Bearer secret"));
}

TEST_F(SettingsPage, ShowsWhatIsMissingOnThisDesktop) {
    screen().press("push button", "Check what Quillmark needs …");
    ASSERT_TRUE(screen().shows("list item", "Window manager · good"));
    EXPECT_TRUE(screen().shows("list item", "Clipboard manager · degraded"));
    EXPECT_THAT(screen().unnamed(), IsEmpty());
    screen().press("push button", "Copy for a report");
    EXPECT_TRUE(comes([&] {
        return desktop.text("CLIPBOARD").value_or("").find("\nhot-key: good: ") != std::string::npos;
    }));
    screen().press("push button", "Look again");
    EXPECT_TRUE(screen().shows("list item", "Language model · good"));
    press("Escape");
    EXPECT_TRUE(screen().shows("push button", "Excluded programs: Add …"));
}

TEST_F(SettingsPage, SpeaksAnotherLanguageAtOnce) {
    screen().press("combo box", "Language");
    ASSERT_TRUE(screen().shows("menu item", "한국어"));
    press("End");
    press("Return");
    EXPECT_TRUE(screen().shows("push button", "도움말"));
    EXPECT_TRUE(screen().shows("menu", "편집"));
    for (const char* page : {"새 지시", "제외한 프로그램: 추가 …", "필요한 것이 갖추어졌는지 살펴보기 …"}) {
        EXPECT_THAT(screen().unnamed(), IsEmpty());
        screen().press("push button", page);
        EXPECT_TRUE(comes([&] { return !screen().shows("push button", page, milliseconds(0)); }));
        EXPECT_THAT(screen().unnamed(), IsEmpty()) << page;
        press("Escape");
    }
    EXPECT_TRUE(kept("language=ko"));
}

// What the desktop's menu runs: the command of that action in the desktop entry.
std::string commandOfAction(const std::string& action) {
    std::istringstream entry(readFile(DESKTOP_ENTRY));
    std::string line;
    while (std::getline(entry, line) && line != "[Desktop Action " + action + "]") {
    }
    while (std::getline(entry, line) && !line.starts_with("Exec=")) {
    }
    return line.substr(std::min(line.size(), sizeof "Exec=" - 1));
}

TEST_F(SettingsPage, OpensFromTheDesktopsMenuWhileTheWindowIsHidden) {
    screen().press("push button", "Back");
    ASSERT_TRUE(comes([&] { return !screen().shows("push button", "Help", milliseconds(0)); }));
    Process(std::vector<std::string>{hostProgram(), "--hide"}).exitStatus();
    ASSERT_TRUE(comes([&] { return isHidden(); }));
    const auto programs = std::filesystem::path(hostProgram()).parent_path().string();
    Process menu({"sh", "-c", commandOfAction("Settings")}, {{"PATH", programs + ":" + std::getenv("PATH")}});
    EXPECT_EQ(menu.exitStatus(), 0) << menu.output();
    EXPECT_TRUE(screen().shows("push button", "Help"));
    EXPECT_TRUE(comes([&] { return isInFront(); }));
}

TEST_F(SettingsPage, ABrokenFileIsSetAside) {
    end();
    start("[Interface\n");
    const auto notice = notices.next();
    ASSERT_TRUE(notice);
    EXPECT_THAT(notice->body, HasSubstr("interface.conf.broken"));
    EXPECT_TRUE(screen().shows("label", "Welcome to Quillmark"));
    EXPECT_THAT(screen().unnamed(), IsEmpty());
}

} // namespace
} // namespace testbed
