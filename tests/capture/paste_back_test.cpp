// Typing a rewrite back: into the very field it came from, or not at all.
#include "capture/ax.h"
#include "capture/paste_target.h"
#include "support/host.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace std::string_literals;
using flutter::EncodableMap;
using flutter::EncodableValue;
using simulated::JournalEntry;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Value = platform::AXAttributeValue;

namespace {

struct PasteBack : testing::Test, Host {
    simulated::Program& writer = world.openProgram({.name = "Writer"});
    simulated::ProgramWindow& letters = writer.openWindow("Letter.txt");
    simulated::Field& letter = writer.addField({.value = "Dear Anna, helo", .selection = {11, 4}});
    std::string token;

    PasteBack() {
        world.bringToFront(writer);
        token = textOf(*capture(), "token");
        world.journal.clear();
    }
    ~PasteBack() override { EXPECT_FALSE(AX::targetPid()); }

    Call paste(EncodableValue text = "hello") {
        return call("paste", EncodableMap{{"text", text}, {"token", token}});
    }
    // The whole field was captured, not a selection.
    void captureField() {
        letter.selection = {};
        letter.copies = simulated::Copies::nothing;
        token = textOf(*capture(), "token");
        world.journal.clear();
    }
    void expectNothingTyped() {
        EXPECT_THAT(world.journal.entriesThatBeginWith("keystroke"), IsEmpty());
        EXPECT_EQ(world.pasteboardText(), "hello") << "the text is there for the user to paste";
    }
};

// Happens between two steps of one paste, however the host spends that time.
using Change = std::function<void(PasteBack&)>;

} // namespace

TEST_F(PasteBack, ReplacesTheSelectionWithinTheCall) {
    EXPECT_EQ(paste().text(), "pasted");
    EXPECT_EQ(letter.value, "Dear Anna, hello");
    EXPECT_FALSE(windowState().visible);
    EXPECT_EQ(world.pasteboardText(), "hello");

    letter = {.value = "Dear Anna, helo", .selection = {11, 4}};
    for (const auto* used : {token.c_str(), ""}) {
        token = used;
        EXPECT_EQ(paste().text(), "copied-only") << "a token serves for one paste";
        EXPECT_EQ(letter.value, "Dear Anna, helo");
    }
}

TEST_F(PasteBack, ReplacesAWholeFieldWithSelectAllAndItsPauses) {
    captureField();
    const auto start = world.time();
    EXPECT_EQ(paste().text(), "pasted");
    EXPECT_EQ(letter.value, "hello");
    EXPECT_THAT(world.journal.entriesThatBeginWith("pasteboard"),
                ElementsAre(JournalEntry{start, "pasteboard cleared by Quillmark"},
                            JournalEntry{start, "pasteboard \"hello\" by Quillmark"},
                            JournalEntry{start, "pasteboard cleared by Quillmark"},
                            JournalEntry{start, "pasteboard \"hello\" by Quillmark"}))
        << "once for the user, once more for the keystroke";
    EXPECT_THAT(world.journal.entriesThatBeginWith("posted"),
                ElementsAre(JournalEntry{start + 30ms, "posted Command+0"},
                            JournalEntry{start + 70ms, "posted Command+9"}));
}

TEST_F(PasteBack, WithoutAUsableTokenOnlyCopies) {
    const bool visible = windowState().visible;
    EXPECT_EQ(call("paste", EncodableMap{{"text", "hello"}}).text(), "copied-only");
    for (const EncodableValue& other : {EncodableValue(""), EncodableValue(7), EncodableValue(token + "0")})
        EXPECT_EQ(call("paste", EncodableMap{{"text", "hello"}, {"token", other}}).text(), "copied-only");
    world.trusted = false;
    EXPECT_EQ(paste().text(), "copied-only");
    EXPECT_EQ(world.permissionPrompts, 0) << "no prompt on this path";
    world.trusted = true;
    expectNothingTyped();
    EXPECT_EQ(windowState().visible, visible);
    EXPECT_EQ(world.time(), 0us);

    EXPECT_EQ(call("paste", "no map").text(), "copied-only");
    EXPECT_EQ(world.pasteboardText(), "");
    EXPECT_EQ(paste(nullptr).text(), "pasted") << "none of these used the token up";
    EXPECT_EQ(letter.value, "Dear Anna, ") << "no text is the empty text";
}

TEST_F(PasteBack, OnlyCopiesWhenTheSourceHasEnded) {
    world.end(writer);
    EXPECT_EQ(paste().text(), "copied-only");
    expectNothingTyped();
}

TEST_F(PasteBack, WaitsUntilTheSourceIsInFrontAndNoModifierIsHeld) {
    world.bringHostToFront();
    world.heldModifiers = platform::kCGEventFlagMaskShift | platform::kCGEventFlagMaskAlphaShift;
    writer.activatesAfter = 130ms;
    world.after(310ms, [&] { world.heldModifiers = platform::kCGEventFlagMaskAlphaShift; });
    const auto start = world.time();
    const auto answer = paste();
    EXPECT_FALSE(answer.answered());
    EXPECT_EQ(call("paste", EncodableMap{{"text", "second"}}).text(),
              "error busy: A paste is already pending");
    pressHotkey();
    EXPECT_THAT(calledMethods(), ElementsAre("capture")) << "no capture disturbs a paste";
    EXPECT_EQ(world.pasteboardText(), "hello");

    world.runFor(2s);
    EXPECT_EQ(answer.text(), "pasted");
    EXPECT_EQ(world.journal.entriesThatBeginWith("keystroke").front().at, start + 320ms + 30ms);
    EXPECT_EQ(letter.value, "Dear Anna, hello");
}

TEST_F(PasteBack, GivesUpAfterOneSecondAndShowsTheWindowAgain) {
    const struct { bool activates, anyInFront; } cases[]{{true, true}, {false, true}, {false, false}};
    for (const auto& [activates, anyInFront] : cases) {
        world.bringToFront(writer);
        token = textOf(*capture(), "token");
        world.bringHostToFront();
        if (!anyInFront) world.bringNothingToFront();
        writer.activates = activates;
        world.heldModifiers = activates ? platform::kCGEventFlagMaskControl : 0;
        const auto start = world.time();
        const auto answer = paste();
        EXPECT_FALSE(windowState().visible);
        world.runFor(3s);
        EXPECT_EQ(answer.text(), "copied-only");
        EXPECT_EQ(answer.at() - simulated::TimePoint{start}, 1000ms);
        EXPECT_TRUE(windowState().visible && windowState().key);
        expectNothingTyped();
        world.heldModifiers = 0;
        EXPECT_EQ(call("paste", EncodableMap{{"text", "hello"}}).text(), "copied-only") << "no longer busy";
    }
}

TEST_F(PasteBack, RefusesATargetThatHasChanged) {
    static constexpr platform::AXValue earlier{platform::AXValueType::cfRange, {10, 4}};
    const std::pair<const char*, Change> changes[]{
        {"value", [](auto& t) { t.letter.value = "Dear Anna, help"; }},
        {"value unreadable", [](auto& t) { t.letter.overrides["AXValue"] = std::nullopt; }},
        {"selection", [](auto& t) { t.letter.overrides["AXSelectedText"] = Value{"hel"s}; }},
        {"selection unreadable", [](auto& t) { t.letter.overrides["AXSelectedText"] = std::nullopt; }},
        {"range", [](auto& t) { t.letter.overrides["AXSelectedTextRange"] = Value{earlier}; }},
        {"range unreadable", [](auto& t) { t.letter.overrides["AXSelectedTextRange"] = std::nullopt; }},
        {"another field", [](auto& t) { t.writer.addField(t.letter); }},
        {"another window",
         [](auto& t) {
             t.writer.openWindow("Other");
             t.writer.focusedField = &t.letter;
         }},
        {"a password, however its text is shown",
         [](auto& t) { t.letter.overrides["AXSubrole"] = Value{"AXSecureTextField"}; }},
    };
    for (const auto& [what, change] : changes) {
        SCOPED_TRACE(what);
        letter.overrides.clear();
        letter.value = "Dear Anna, helo";
        letter.selection = {11, 4};
        writer.focusedWindow = &letters;
        writer.focus(letter);
        token = textOf(*capture(), "token");
        ASSERT_NE(token, "");
        change(*this);
        EXPECT_EQ(paste().text(), "copied-only");
        expectNothingTyped();
        EXPECT_TRUE(windowState().visible);
    }
}

TEST_F(PasteBack, ComparesOnlyWhatTheCaptureCouldRead) {
    letter.overrides["AXValue"] = std::nullopt;
    token = textOf(*capture(), "token");
    letter.overrides.clear();
    EXPECT_EQ(paste().text(), "pasted");

    CaptureState captured;
    captured.originalSelection = "helo";
    const PasteTarget withSelection{captured}, without{CaptureState{}};
    const auto element = world.elementOf(letter);
    letter.overrides["AXSelectedText"] = Value{"helo"};
    EXPECT_TRUE(withSelection.selectionUnchanged(element));
    EXPECT_FALSE(without.selectionUnchanged(element));
    letter.overrides["AXSelectedText"] = std::nullopt;
    EXPECT_FALSE(withSelection.selectionUnchanged(element));
    EXPECT_TRUE(without.selectionUnchanged(element));
}

TEST_F(PasteBack, ComparesTextAsAReaderSeesIt) {
    letter.value = "caf\u00e9";
    letter.selection = {0, 5};
    token = textOf(*capture(), "token");
    letter.value = "cafe\u0301";
    letter.overrides["AXSelectedText"] = Value{letter.value};
    EXPECT_EQ(paste().text(), "pasted");
}

TEST_F(PasteBack, IntoAWholeFieldDoesNotCompareTheCaret) {
    captureField();
    letter.selection = {3, 0};
    EXPECT_EQ(paste().text(), "pasted");
    captureField();
    letter.value += "!";
    EXPECT_EQ(paste().text(), "copied-only");
}

TEST_F(PasteBack, ChecksOnceMoreAfterTheTargetCheck) {
    const std::pair<const char*, Change> changes[]{
        {"a modifier", [](auto& t) { t.world.heldModifiers = platform::kCGEventFlagMaskCommand; }},
        {"another application", [](auto& t) { t.world.bringHostToFront(); }},
    };
    for (const auto& [what, change] : changes) {
        SCOPED_TRACE(what);
        world.bringToFront(writer);
        token = textOf(*capture(), "token");
        writer.reactionTime = 5ms;
        world.after(12ms, [this, change = change] { change(*this); });
        world.journal.clear();
        EXPECT_EQ(paste().text(), "copied-only");
        expectNothingTyped();
        EXPECT_THAT(world.journal.entriesThatBeginWith("pasteboard"), SizeIs(2)) << "keys were prepared";
        world.heldModifiers = 0;
        writer.reactionTime = 0ms;
    }
    world.bringToFront(writer);
    token = textOf(*capture(), "token");
    writer.reactionTime = 300ms;
    EXPECT_EQ(paste().text(), "copied-only") << "a check that takes longer than the second ends the paste";
}

TEST_F(PasteBack, TypesNothingAfterAChangeBetweenTheLastCheckAndTheKeys) {
    const std::pair<const char*, Change> changes[]{
        {"the text", [](auto& t) { t.letter.value += "!"; }},
        {"another field", [](auto& t) { t.writer.addField(t.letter); }},
        {"a password field", [](auto& t) { t.letter.subrole = "AXSecureTextField"; }},
        {"a key", [](auto& t) { ++t.world.keysPressed; }},
        {"a modifier", [](auto& t) { t.world.heldModifiers = platform::kCGEventFlagMaskShift; }},
        {"another application", [](auto& t) { t.world.bringHostToFront(); }},
    };
    for (const auto& [what, change] : changes) {
        for (const auto moment : {10ms, 50ms}) { // before "select all", and after it
            SCOPED_TRACE(what);
            letter = {.value = "Dear Anna, helo"};
            world.heldModifiers = 0;
            world.bringToFront(writer);
            writer.focus(letter);
            captureField();
            world.after(moment, [this, change = change] { change(*this); });
            EXPECT_EQ(paste().text(), "copied-only");
            expectNothingTyped();
            EXPECT_TRUE(windowState().visible);
        }
    }
}
