// The main view as a writer works with it: the hot key shows the window, the writer applies.
#include "interface/writer.h"
#include "testing/desktop/host.h"
#include "testing/desktop/temporary_folder.h"

#include <cstdlib>
#include <filesystem>

namespace testbed {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Review : Writer {
    // Of those that host, interface and desktop write.
    void expectInNoFile(const std::vector<std::string>& texts) {
        std::vector<std::filesystem::path> roots{folder / "config", folder / "state"};
        for (const char* name : {"XDG_CACHE_HOME", "XDG_DATA_HOME", "QUILLMARK_DESKTOP_LOG"})
            if (const char* root = std::getenv(name)) roots.emplace_back(root);
        int files = 0;
        for (const auto& root : roots)
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
                if (!entry.is_regular_file()) continue;
                ++files;
                for (const auto& text : texts)
                    EXPECT_THAT(readFile(entry.path()), testing::Not(HasSubstr(text))) << entry.path();
            }
        EXPECT_GT(files, 1) << "nothing was looked at";
    }
};

TEST_F(Review, ShowsARewriteAndPutsItIn) {
    start();
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(rewritten("I know it")) << host->output();
    EXPECT_TRUE(comes([&] { return isInFront(); }));
    EXPECT_TRUE(originalIs("i knwo it"));
    EXPECT_TRUE(hasKeyboard("text", "Rewrite")) << "the keyboard is not where a person would type next";
    EXPECT_TRUE(screen().shows("label", "1 change"));
    EXPECT_THAT(screen().textWith("strikethrough", "text", "Original"), ElementsAre("i knwo"));
    EXPECT_THAT(screen().textWith("underline", "text", "Rewrite"), ElementsAre("I know"));

    press("Control+End");
    type(" well");
    EXPECT_TRUE(comes([&] {
        return screen().textWith("underline", "text", "Rewrite") ==
               std::vector<std::string>{"I know", "well"};
    }));
    press("Control+Return");
    fields->awaitText("I know it well");
    EXPECT_TRUE(comes([&] { return desktop.activeWindow() != window(); }));

    Process({hostProgram(), "--show"}).exitStatus();
    ASSERT_TRUE(screen().shows("push button", "Undo"));
    press("Control+Shift+o");
    fields->awaitText("i knwo it");
}

TEST_F(Review, ChangesTheInstruction) {
    start();
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(rewritten("I know it"));
    const struct {
        const char *keys, *asked;
    } table[]{{"Control+2", "half as long"}, {"Control+6", "in verse"}};
    for (const auto& [keys, asked] : table) {
        model.answers(asked);
        press(keys);
        if (screen().shows("text", "What should be done with the text?", milliseconds(300))) {
            type("in verse");
            press("Return");
        }
        ASSERT_TRUE(rewritten(asked)) << asked;
        EXPECT_THAT(model.request(), HasSubstr(asked));
        EXPECT_TRUE(hasKeyboard("text", "Rewrite"));
    }
    // The answer of before is selected then. What is selected here must not end the selection there.
    press("Control+6");
    ASSERT_TRUE(hasKeyboard("text", "What should be done with the text?"));
    press("Escape");
    ASSERT_TRUE(hasKeyboard("text", "Rewrite"));
    press("Control+Home");
    press("Control+Shift+Right");
    type("x");
    ASSERT_TRUE(rewritten("x verse")) << rewrite();
    press("Control+Return");
    fields->awaitText("x verse");
}

TEST_F(Review, StopsAndBeginsAgain) {
    start();
    model.answers("I know it and more", Manner::half);
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(comes([&] { return rewrite() == "I know it"; })) << rewrite();
    EXPECT_FALSE(screen().isSensitive("push button", "Apply")) << "half an answer can be applied";
    press("Control+period");
    EXPECT_TRUE(comes([&] { return model.hungUp() == 1; })) << "the model goes on writing";
    EXPECT_TRUE(screen().shows("push button", "Again"));
    EXPECT_FALSE(screen().isSensitive("push button", "Apply"));
    model.answers("I know it");
    press("Control+r");
    EXPECT_TRUE(rewritten("I know it"));
}

// While they grow they are broken where the eye hardly sees it.
TEST_F(Review, LongParagraphsAreWholeOnceTheirRewriteIs) {
    start();
    const auto repeated = [](const std::string& words) {
        std::string text;
        while (text.size() < 4000)
            text += words;
        return text;
    };
    for (const auto& [before, after] : {std::pair(repeated("i knwo it "), repeated("I know it ")),
                                        {repeated("私は知っていま"), repeated("私は知っています")}}) {
        model.answers(after, Manner::half);
        write(before);
        pressHotKey();
        ASSERT_TRUE(comes([&] { return rewrite().find("\u2029") != std::string::npos; })) << rewrite();
        screen().focus("text", "Original");
        press("Control+a");
        press("Control+c");
        EXPECT_TRUE(comes([&, before = before] { return desktop.text("CLIPBOARD") == before; }));
        screen().focus("text", "Rewrite");
        model.finish();
        EXPECT_TRUE(rewritten(after)) << rewrite();
        EXPECT_TRUE(originalIs(before));
        press("Control+End");
        type("x");
        EXPECT_TRUE(rewritten(after + "x")) << "it cannot be edited";
        press("Control+Return");
        fields->awaitText(after + "x");
    }
}

TEST_F(Review, ARefusedPasteLosesNeitherTheRewriteNorAKeystroke) {
    start();
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(rewritten("I know it"));
    fields->command("text 0 something else");
    press("Control+Return");
    EXPECT_TRUE(screen().shows("label",
                               "The text there has changed in the meantime, so nothing was put in. The "
                               "rewrite is on the clipboard: Ctrl+V pastes it."));
    EXPECT_EQ(desktop.text("CLIPBOARD"), "I know it");
    type("abc");
    ASSERT_TRUE(comes([&] { return isInFront(); }));
    press("Control+comma"); // comes behind the others
    ASSERT_TRUE(screen().shows("push button", "Back"));
    press("Escape");
    EXPECT_EQ(rewrite(), "I know it") << "keys meant for the other program have changed the rewrite";
    EXPECT_THAT(fields->dump(), HasSubstr("something else"));
}

TEST_F(Review, WithoutAModelItCorrectsTheSpellingAndSaysSo) {
    start(known, {{"OPENAI_BASE_URL", "http://127.0.0.1:9/v1"}});
    write("I recieved it");
    pressHotKey();
    EXPECT_TRUE(rewritten("I received it")) << rewrite();
    EXPECT_TRUE(screen().shows("label", "1 change · Spelling only"));
    press("Control+2");
    EXPECT_TRUE(comes([&] {
        for (const auto& control : screen().all())
            if (control.starts_with("label: Without a language model only")) return true;
        return false;
    }));
}

TEST_F(Review, AsksOnceWhetherAModelThatWasFoundMayHaveTheTexts) {
    const std::map<std::string, std::string> found{{"OPENAI_BASE_URL", ""}, {"OLLAMA_HOST", model.address()}};
    start(known, found);
    model.answers("I have it");
    write("i recieved it");
    pressHotKey();
    ASSERT_TRUE(screen().shows("push button", "Use it"));
    EXPECT_THAT(screen().unnamed(), IsEmpty());
    screen().press("push button", "Spelling only");
    EXPECT_TRUE(rewritten("I received it")) << rewrite();
    end();

    start({}, found);
    write("i recieved it");
    pressHotKey();
    EXPECT_TRUE(rewritten("I received it")) << "asked again: " << rewrite();
    EXPECT_EQ(model.requests(), 0) << "a model that may not have them got the texts";
    press("Control+comma");
    screen().press("check box", "Let this model have my texts");
    ASSERT_TRUE(comes([&] { return screen().isChecked("check box", "Let this model have my texts"); }));
    write("i recieved it");
    pressHotKey();
    EXPECT_TRUE(rewritten("I have it")) << rewrite();
}

TEST_F(Review, AModelThatDiesLeavesTheTextAndAWayToGoOn) {
    start();
    model.answers("I know it", Manner::dies);
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(comes([&] { return screen().isSensitive("push button", "Again"); }));
    EXPECT_FALSE(screen().isSensitive("push button", "Apply")) << "half an answer can be applied";
    EXPECT_TRUE(originalIs("i knwo it"));
    press("Control+h");
    EXPECT_TRUE(screen().shows(
        "label", "Nothing yet. What you rewrite is listed here until you quit; it is never stored."));
    press("Escape");
    model.answers("I know it");
    press("Control+r");
    EXPECT_TRUE(rewritten("I know it"));
    pressHotKey();
    ASSERT_TRUE(comes([&] { return model.requests() == 3; }));
    press("Control+h");
    ASSERT_TRUE(screen().shows("label", "History"));
}

TEST_F(Review, TakesAnEarlierRewriteUpAgainAsItWasLeft) {
    start();
    for (const auto& [before, after] :
         {std::pair("i knwo it", "I know it"), {"you knwo it", "You know it"}}) {
        model.answers(after);
        write(before);
        pressHotKey();
        ASSERT_TRUE(rewritten(after)) << host->output();
        press("Control+End");
        type(" well");
        ASSERT_TRUE(rewritten(after + std::string(" well")));
    }
    press("Control+h");
    ASSERT_TRUE(hasKeyboard("list item", ""));
    press("Return");
    EXPECT_TRUE(originalIs("i knwo it"));
    EXPECT_TRUE(rewritten("I know it well")) << rewrite();
    EXPECT_TRUE(hasKeyboard("text", "Rewrite"));
    press("Control+z");
    press("Control+End");
    type("x");
    EXPECT_TRUE(rewritten("I know it wellx")) << "undo has brought the other text back: " << rewrite();
}

TEST_F(Review, NamesEveryControlInEachLanguage) {
    model.answers("I know it");
    const struct {
        const char *language, *apply, *rewrite, *question, *history, *stay;
    } table[]{{"en", "Apply", "Rewrite", "What should be done with the text?", "History", "Stay"},
              {"ko", "넣기", "고친 글", "이 글을 어떻게 고칠까요?", "기록", "계속하기"}};
    for (const auto& [language, apply, rewrite, question, history, stay] : table) {
        start(known + ("language=" + std::string(language)) + "\n");
        write("i knwo it");
        for (const int requests = model.requests();
             const int further : {1, 2}) { // the first, for the history
            pressHotKey();
            ASSERT_TRUE(comes([&] { return model.requests() == requests + further; })) << host->output();
            ASSERT_TRUE(comes([&, apply = apply] { return screen().isSensitive("push button", apply); }));
        }
        ASSERT_TRUE(hasKeyboard("text", rewrite));
        EXPECT_THAT(screen().unnamed(), IsEmpty()) << language;
        type("x"); // else nothing is asked before the end
        press("Control+6");
        ASSERT_TRUE(hasKeyboard("text", question));
        EXPECT_THAT(screen().unnamed(), IsEmpty()) << language;
        press("Control+h");
        ASSERT_TRUE(screen().shows("label", history));
        ASSERT_TRUE(screen().shows("list item", ""));
        EXPECT_THAT(screen().unnamed(), IsEmpty()) << language;
        press("Control+q");
        ASSERT_TRUE(hasKeyboard("push button", stay));
        EXPECT_THAT(screen().unnamed(), IsEmpty()) << language;
        press("Tab");
        press("space");
        EXPECT_EQ(host->exitStatus(), 0) << host->output();
    }
}

TEST_F(Review, QuittingAsksWhileWorkIsUnfinished) {
    start();
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(rewritten("I know it"));
    ASSERT_TRUE(hasKeyboard("text", "Rewrite"));
    type("x");
    ASSERT_TRUE(comes([&] { return rewrite() == "xI know it"; }));
    press("Control+q");
    ASSERT_TRUE(screen().shows("push button", "Stay"));
    EXPECT_TRUE(hasKeyboard("push button", "Stay"));
    press("space");
    ASSERT_TRUE(screen().shows("text", "Rewrite"));
    EXPECT_EQ(rewrite(), "xI know it");
    press("Control+q");
    ASSERT_TRUE(screen().shows("push button", "Quit"));
    press("Tab");
    press("space");
    EXPECT_EQ(host->exitStatus(), 0) << host->output();
    EXPECT_THAT(host->output(), testing::Not(HasSubstr("know"))) << "a writer's text was printed";
    expectInNoFile({"I know it", "i knwo it"});
}

} // namespace
} // namespace testbed
