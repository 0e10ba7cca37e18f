// The whole way on a real desktop: keys pressed in a real program, text read from it and typed back into it,
// judged by what that program itself says.
#include "flutter/arguments.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/editor.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"

#include <gmock/gmock.h>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableList;
using flutter::EncodableMap;
using flutter::EncodableValue;
using testing::HasSubstr;

struct CaptureAndPaste : testing::Test {
    void SetUp() override {
        host.bringToFront(desktop); // or it would come to the front in the middle of the test
        initialize({});
    }

    void initialize(const EncodableList& excluded) {
        const CallOutcome reply = host.call("initialize", EncodableMap{{"excluded_apps", excluded}});
        ASSERT_EQ(reply, CallOutcome(EncodableMap{{"hotkey_registered", true}}));
    }

    // What the host sends when the hot key is pressed; null when it sends nothing in time. Fingers are slow:
    // the key is still down then.
    EncodableValue capture(milliseconds limit = reactionLimit) {
        desktop.keyboard.hold("Alt+Shift+space");
        const auto sent = host.nextCall("capture", limit);
        desktop.keyboard.letGo("space+Shift+Alt");
        return sent.value_or(EncodableValue());
    }

    // "pasted", "copied-only" or the error's code.
    std::string paste(std::string_view text, const std::string& token) {
        return answer(host.startCall("paste", EncodableMap{{"text", text}, {"token", token}}));
    }
    std::string answer(std::uint32_t call) {
        const CallOutcome outcome = host.answer(call);
        if (const auto* error = std::get_if<flutter::FlutterError>(&outcome)) return error->code;
        const auto* value = std::get_if<EncodableValue>(&outcome);
        const auto* reply = value ? flutter::asString(*value) : nullptr;
        return reply ? *reply : "(none)";
    }

    Desktop desktop;
    Host host;
};

TEST_F(CaptureAndPaste, ASelectionIsReplacedWhereItStands) {
    Fields fields(desktop, {"entry=one two three"}, "A title");
    fields.command("select 0 4 7");
    const EncodableValue got = capture();
    EXPECT_EQ(textOf(got, "text"), "two");
    EXPECT_EQ(textOf(got, "source"), "selection");
    EXPECT_EQ(textOf(got, "title"), "A title");
    ASSERT_EQ(textOf(got, "token").size(), 36u);
    EXPECT_EQ(paste("2 \xE2\x98\xBA", textOf(got, "token")), "pasted");
    fields.awaitText("one 2 \xE2\x98\xBA three");
    EXPECT_EQ(paste("again", textOf(got, "token")), "copied-only") << "a token served twice";
    EXPECT_EQ(desktop.text("CLIPBOARD"), "again");
}

TEST_F(CaptureAndPaste, AWholeFieldIsReplacedAsAWhole) {
    Fields fields(desktop, {"textview=first line\\nsecond line"});
    const EncodableValue got = capture();
    EXPECT_EQ(textOf(got, "text"), "first line\nsecond line");
    EXPECT_EQ(textOf(got, "source"), "field");
    EXPECT_EQ(paste("all new", textOf(got, "token")), "pasted");
    EXPECT_TRUE(waitUntil([&] { return fields.dump().find("\"text\": \"all new\"") != std::string::npos; }))
        << fields.dump();
}

TEST_F(CaptureAndPaste, NothingIsTypedIntoAFieldThatHasChanged) {
    Fields fields(desktop, {"entry=one two three"});
    fields.command("select 0 4 7");
    const EncodableValue got = capture();
    fields.command("select 0 0 3");
    EXPECT_EQ(paste("2", textOf(got, "token")), "copied-only");
    EXPECT_THAT(fields.dump(), HasSubstr("one two three"));
    EXPECT_EQ(desktop.text("CLIPBOARD"), "2");
}

// A program puts the text wherever its focus and selection are once it has the text.
TEST_F(CaptureAndPaste, NothingIsTypedWhereThePasteKeystrokeFindsAnotherPlace) {
    Fields fields(desktop, {"entry", "entry", "password"});
    for (const std::string change :
         {"text 0 quite another text", "append 0 !", "select 0 0 3", "focus 1", "focus 2"})
        for (const bool wholeField : {false, true}) {
            fields.command("text 0 one two three");
            fields.command("focus 0");
            if (!wholeField) fields.command("select 0 4 7");
            const EncodableValue got = capture();
            fields.command("onpaste " + change);
            EXPECT_EQ(paste("REWRITE", textOf(got, "token")), "copied-only");
            EXPECT_THAT(fields.dump(), Not(HasSubstr("REWRITE")))
                << change << (wholeField ? ", whole field" : "");
            EXPECT_EQ(desktop.text("CLIPBOARD"), "REWRITE");
            ASSERT_TRUE(desktop.bringToFront(fields.process().pid()));
        }
}

TEST_F(CaptureAndPaste, ReachesAFieldThatWasLeftOnAnotherWorkspace) {
    Fields fields(desktop, {"entry=one two three"});
    fields.command("select 0 4 7");
    const EncodableValue got = capture();
    ASSERT_TRUE(desktop.goToWorkspace(1));
    EXPECT_EQ(paste("2", textOf(got, "token")), "pasted");
    EXPECT_EQ(desktop.workspace(), 0U);
    EXPECT_TRUE(waitUntil([&] { return fields.dump().find("one 2 three") != std::string::npos; }))
        << fields.dump();
}

TEST_F(CaptureAndPaste, ATerminalGivesItsSelectedTextAndItsProgramIsNotInterrupted) {
    TemporaryFolder folder;
    const std::string told = folder / "told";
    // With that escape sequence xterm selects the text "two words", in base64.
    const std::string script = "trap 'echo interrupted >>\"$0\"' INT; printf '\\033]52;p;dHdvIHdvcmRz\\007'; "
                               "while :; do read -r line; echo \"$line\" >>\"$0\"; done";
    Process terminal({"xterm", "-xrm", "*allowWindowOps: true", "-e", "sh", "-c", script, told});
    ASSERT_TRUE(waitUntil([&] { return desktop.text("PRIMARY") == "two words"; })) << terminal.output();
    ASSERT_TRUE(desktop.bringToFront(terminal.pid())); // metacity leaves it behind the host
    const EncodableValue got = capture();
    EXPECT_EQ(textOf(got, "text"), "two words");
    EXPECT_EQ(textOf(got, "source"), "clipboard");
    EXPECT_EQ(textOf(got, "token"), "");
    for (const char* key : {"o", "k", "Return"})
        desktop.keyboard.press(key);
    EXPECT_TRUE(waitUntil([&] { return readFile(told) == "ok\n"; })) << readFile(told);
}

TEST_F(CaptureAndPaste, PasswordsAndExcludedProgramsAreLeftAlone) {
    Fields fields(desktop, {"password=secret", "entry=open"});
    EXPECT_EQ(capture(milliseconds(500)), EncodableValue());
    fields.command("focus 1");
    const EncodableValue got = capture();
    EXPECT_EQ(textOf(got, "text"), "open");
    initialize({textOf(got, "app_id")});
    EXPECT_EQ(capture(milliseconds(500)), EncodableValue());
}

TEST_F(CaptureAndPaste, HeldModifiersDelayThePasteUntilTheyAreLetGo) {
    Fields fields(desktop, {"entry=one two three"});
    fields.command("select 0 4 7");
    const EncodableValue got = capture();
    desktop.keyboard.hold("Control+Shift");
    const auto call = host.startCall("paste", EncodableMap{{"text", "2"}, {"token", textOf(got, "token")}});
    EXPECT_EQ(paste("other", ""), "busy");
    EXPECT_THAT(fields.dump(), HasSubstr("one two three"));
    desktop.keyboard.letGo("Control+Shift");
    EXPECT_EQ(answer(call), "pasted");
    fields.awaitText("one 2 three");
}

TEST_F(CaptureAndPaste, WorksInMousepad) {
    TemporaryFolder folder;
    const std::string text = "keep this\nteh words\nand this\n";
    Editor editor(desktop, folder / "note.txt", text);
    ASSERT_TRUE(editor.selectLines(1, 1));
    const EncodableValue got = capture();
    EXPECT_EQ(textOf(got, "text"), "teh words\n");
    EXPECT_THAT(textOf(got, "title"), HasSubstr("note.txt"));
    EXPECT_EQ(paste("the words\n", textOf(got, "token")), "pasted");
    EXPECT_EQ(editor.savedText(text), "keep this\nthe words\nand this\n");
}

} // namespace
