// The person's choices: as a file, and which hot keys will do.
#include "check/finding.h"
#include "language/phrase.h"
#include "rewriting/describe.h"
#include "settings/hot_key.h"
#include "settings/key_position.h"
#include "settings/login.h"
#include "settings/programs.h"
#include "settings/settings_file.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillmark {
namespace {

using testbed::readFile;
using testbed::writeFile;

TEST(Settings, SurviveARestart) {
    testbed::TemporaryFolder folder;
    const auto file = folder / "new";
    EXPECT_EQ(loadSettings(file / "a.conf").settings, Settings());
    EXPECT_FALSE(loadSettings(file / "a.conf").found);
    const Settings settings{
        .hotKey = {.keyCode = 40, .command = true, .option = false, .control = true, .shift = false},
        .excludedApps = {"org.keepass", "semi;colon", "ko 한글"},
        .way = WayOfWorking::atOnce,
        .language = ChosenLanguage::korean,
        .statusIcon = false,
        .instructions = {{"Tidy", "First line.\nSecond; line = [x] \\n", "What?", "<Control>7", true},
                         {"B", "b"}},
        .trustedServers = {"http://127.0.0.1:11434"},
        .declinedServers = {"http://127.0.0.1:8080"},
        .introduced = true,
        .closeExplained = true};
    EXPECT_EQ(saveSettings(file / "a.conf", settings), std::nullopt);
    const auto loaded = loadSettings(file / "a.conf");
    EXPECT_EQ(loaded.settings, settings);
    EXPECT_FALSE(loaded.setAside);
    struct stat status {};
    ASSERT_EQ(stat((file / "a.conf").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0600u);
    EXPECT_TRUE(saveSettings("/proc/nowhere/a.conf", settings)) << "a failure went unnoticed";
}

TEST(Settings, AFileThatCannotBeReadIsKeptAside) {
    testbed::TemporaryFolder folder;
    const auto file = folder / "interface.conf";
    for (const std::string broken :
         {"no group\n", "[Interface\n", "\xFF\xFE\x00x", "[Interface]\nnonsense\n"}) {
        writeFile(file, broken);
        const auto loaded = loadSettings(file);
        EXPECT_EQ(loaded.settings, Settings());
        ASSERT_TRUE(loaded.setAside) << broken;
        EXPECT_EQ(readFile(*loaded.setAside), broken);
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    writeFile(file, "[Interface]\nstatus_icon=perhaps\nlanguage=tlh\nway_of_working=at_once\n"
                    "[Hot key]\nkey_code=x\noption=false\n[Instruction 1]\nname=\n");
    const auto loaded = loadSettings(file);
    EXPECT_FALSE(loaded.setAside);
    EXPECT_EQ(loaded.settings, Settings({.hotKey = {.option = false}, .way = WayOfWorking::atOnce}))
        << "one wrong value cost the others";
}

TEST(HotKeyChoice, RefusesOrWarnsOfCombinationsThatAreNeededElsewhere) {
    enum { good, warned, refused };
    const struct {
        HotKey hotKey;
        int verdict;
        const char* name;
    } table[]{
        {{}, good, "Alt+Shift+K"},
        {{40, false, true, true, false}, good, "Ctrl+Alt+K"},
        {{40, false, false, true, true}, good, "Ctrl+Shift+K"},
        {{40, false, false, false, false}, refused, "K"},
        {{122, false, false, false, true}, refused, "Shift+K"},
        {{8, false, false, true, false}, warned, "Ctrl+K"},
        {{118, false, true, false, false}, warned, "Alt+K"},
        {{48, false, true, false, true}, warned, "Alt+Shift+K"},
        {{37, true, false, false, false}, warned, "Super+K"},
        {{117, false, true, true, false}, warned, "Ctrl+Alt+K"},
    };
    for (const auto& [hotKey, verdict, name] : table) {
        EXPECT_EQ(refusalOf(hotKey).has_value(), verdict == refused) << name;
        EXPECT_EQ(!refusalOf(hotKey) && warningOf(hotKey).has_value(), verdict == warned) << name;
        EXPECT_EQ(nameOf(hotKey, "K"), name);
    }
}

TEST(HotKeyChoice, NumbersKeysByTheirPlaceOnTheKeyboard) {
    EXPECT_EQ(keyCodeAt(57), 49) << "the space bar";
    EXPECT_EQ(positionOf(49), 57u);
    EXPECT_EQ(keyCodeAt(42), std::nullopt) << "the left Shift key";
    for (int keyCode = 0; keyCode < 128; ++keyCode)
        if (const auto position = positionOf(keyCode)) {
            EXPECT_EQ(keyCodeAt(*position), keyCode);
        }
}

TEST(Login, IsSwitchedOnAndOff) {
    testbed::TemporaryFolder folder;
    const auto file = folder / "autostart/quillmark-host.desktop";
    EXPECT_FALSE(startsAtLogin(file));
    EXPECT_EQ(setStartsAtLogin(file, true, "/opt/a b/100%/quillmark-host"), std::nullopt);
    EXPECT_TRUE(startsAtLogin(file));
    EXPECT_THAT(readFile(file), testing::HasSubstr("Exec=\"/opt/a b/100%%/quillmark-host\" --background\n"));
    EXPECT_EQ(setStartsAtLogin(file, false, "quillmark-host"), std::nullopt);
    EXPECT_FALSE(startsAtLogin(file));
    writeFile(file, "[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(startsAtLogin(file)) << "switched off in the desktop's own settings";
}

TEST(Programs, RecentOnesAreKnownOnceEach) {
    RecentPrograms recent;
    for (const char* id : {"a", "b", "", "a"})
        recent.add({id, id});
    EXPECT_THAT(recent.programs(), testing::ElementsAre(ProgramName{"a", "a"}, ProgramName{"b", "b"}));
}

TEST(Findings, AreReadAndSaidInEachLanguage) {
    const auto findings = readFindings(
        R"({"worst": "degraded", "checks": [{"name": "files", "grade": "good", "found": "/home"},
            {"name": "hot-key", "grade": "degraded", "found": "F9, paused", "meaning": "It is paused.", "mend": "Go on."},
            {"name": "new", "grade": "missing", "found": "none", "meaning": "Buy one.", "mend": ""}]})");
    ASSERT_TRUE(findings);
    EXPECT_EQ(summaryOf(*findings), "Missing: 1, degraded: 1");
    EXPECT_EQ(explanationOf(findings->at(0)), "");
    EXPECT_EQ(explanationOf(findings->at(1)), "It is paused. Go on.");
    EXPECT_EQ(nameOf(findings->at(2)), "new");
    EXPECT_EQ(reportOf(*findings),
              "files: good: /home\nhot-key: degraded: F9, paused\n    It is paused. Go on.\n"
              "new: missing: none\n    Buy one.\n");
    setLanguage(Language::korean);
    EXPECT_EQ(nameOf(findings->at(1)) + gradeOf(findings->at(1)), "단축키부족함");
    EXPECT_THAT(explanationOf(findings->at(1)), testing::EndsWith("\nIt is paused. Go on."));
    EXPECT_EQ(explanationOf(findings->at(2)), "Buy one.");
    EXPECT_EQ(foundOf(findings->at(0)) + foundOf(findings->at(1)), "/homeF9: 일시 중지됨");
    setLanguage(Language::english);
    for (const char* broken : {"", "{}", R"({"checks": [{"name": "files", "grade": "fine"}]})"})
        EXPECT_FALSE(readFindings(broken)) << broken;
}

TEST(Words, ACaptureIsDescribedInEachLanguage) {
    const Capture capture{.text = std::string(1204, 'x'),
                          .source = "field",
                          .appName = "Mousepad",
                          .title = "letter.txt",
                          .truncated = true};
    EXPECT_EQ(placeOf(capture), "Mousepad — letter.txt");
    EXPECT_EQ(extentOf(capture), "Whole field, 1,204 characters");
    EXPECT_EQ(limitsOf(capture).size(), 2u);
    setLanguage(languageOf("ko_KR.UTF-8"));
    EXPECT_EQ(extentOf(capture), "입력란 전체, 1,204자");
    setLanguage(languageOf("kok_IN"));
    EXPECT_EQ(extentOf({.text = "é", .source = "clipboard"}), "From the clipboard, 1 character");
}

} // namespace
} // namespace quillmark
