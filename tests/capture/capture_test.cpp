// What a press of the hot key reads, from where, and what it leaves untouched.
#include "capture/ax.h"
#include "flutter/arguments.h"
#include "support/host.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using flutter::asBool;
using flutter::EncodableList;
using flutter::EncodableMap;
using flutter::member;
using simulated::Accessibility;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Value = platform::AXAttributeValue;

namespace {

struct Capture : testing::Test, Host {
    simulated::Program& writer =
        world.openProgram({.name = "Writer", .bundleIdentifier = "org.example.Writer"});
    simulated::ProgramWindow& letters = writer.openWindow("Letter.txt");

    Capture() { world.bringToFront(writer); }
    ~Capture() override { EXPECT_FALSE(AX::targetPid()) << "the target must be forgotten on every way out"; }

    simulated::Field& field(std::string value, platform::CFRange selection = {}) {
        return writer.addField({.value = std::move(value), .selection = selection});
    }
    std::string summary() {
        const auto sent = capture();
        if (!sent) return "nothing";
        return textOf(*sent, "source") + ": " + textOf(*sent, "text") +
               (textOf(*sent, "token").empty() ? "" : " +token") +
               (asBool(member(&*sent, "truncated")).value_or(false) ? " +truncated" : "");
    }
};

std::string characters(std::size_t count, std::string_view character) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += character;
    return all;
}

} // namespace

TEST_F(Capture, HandsOverTheSelectionWithItsPlaceAndAToken) {
    field("Dear Anna, hello", {5, 4});
    const auto sent = capture();
    ASSERT_TRUE(sent);
    EXPECT_THAT(*sent, SizeIs(7));
    EXPECT_EQ(textOf(*sent, "text"), "Anna");
    EXPECT_EQ(textOf(*sent, "source"), "selection");
    EXPECT_EQ(textOf(*sent, "app_id"), "org.example.Writer");
    EXPECT_EQ(textOf(*sent, "app_name"), "Writer");
    EXPECT_EQ(textOf(*sent, "title"), "Letter.txt");
    EXPECT_THAT(textOf(*sent, "token"), testing::MatchesRegex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
    EXPECT_EQ(asBool(member(&*sent, "truncated")), false);
    EXPECT_THAT(writer.keystrokes, IsEmpty()) << "a selection that can be read needs no synthetic copy";
    EXPECT_EQ(world.time(), 0us) << "nor any wait";
    EXPECT_NE(textOf(*capture(), "token"), textOf(*sent, "token"));
}

TEST_F(Capture, TakesTheFirstSourceThatHasText) {
    auto& letter = field("  Dear Anna  ");
    world.putOnPasteboard("from before");
    letter.copies = simulated::Copies::nothing;
    EXPECT_EQ(summary(), "field: Dear Anna +token");

    letter.selection = {0, 2};
    EXPECT_EQ(summary(), "selection:    +token") << "a selection of spaces is a selection";

    letter.overrides["AXSelectedText"] = std::nullopt;
    letter.copies = simulated::Copies::selection;
    letter.selection = {2, 4};
    EXPECT_EQ(summary(), "clipboard: Dear") << "what was copied has no known place";
    EXPECT_EQ(world.pasteboardText(), "from before");

    letter.value = " \n ";
    letter.selection = {};
    EXPECT_FALSE(AX::focusedFieldValue());
    EXPECT_EQ(summary(), "clipboard: from before");
    world.emptyPasteboard();
    EXPECT_EQ(summary(), "clipboard: ");
}

TEST_F(Capture, GivesNoTokenForAPlaceThatIsNotKnown) {
    auto& letter = field("Dear Anna", {0, 4});
    letter.overrides["AXSelectedTextRange"] = Value{platform::AXValue{platform::AXValueType::cgPoint, {}}};
    EXPECT_EQ(summary(), "selection: Dear");
    letter.overrides.clear();
    writer.overrides["AXFocusedWindow"] = Value{std::string{"not a window"}};
    const auto sent = capture();
    EXPECT_EQ(textOf(*sent, "token"), "");
    EXPECT_EQ(textOf(*sent, "title"), "");

    writer.overrides.clear();
    letter.selection = {};
    letter.copies = simulated::Copies::nothing;
    letter.overrides["AXValue"] = std::nullopt;
    world.after(100ms, [&] { letter.overrides.clear(); });
    EXPECT_EQ(summary(), "field: Dear Anna") << "the value could not be read at first";
}

TEST_F(Capture, CutsALongFieldAtThreeThousandCharactersAndGivesNoToken) {
    const std::string family = "👨‍👩‍👧";
    auto& letter = field("\n" + characters(3000, family) + "\u3000");
    letter.copies = simulated::Copies::nothing;
    EXPECT_EQ(summary(), "field: " + characters(3000, family) + " +token");
    letter.value += "é";
    EXPECT_EQ(summary(), "field: " + characters(3000, family) + " +truncated");
}

TEST_F(Capture, ReadsOnlyWhatIsATextField) {
    auto& letter = field("Dear Anna");
    letter.copies = simulated::Copies::nothing;
    letter.role = "AXStaticText";
    EXPECT_EQ(summary(), "field: Dear Anna +token") << "editable, whatever its role";
    for (const simulated::AttributeRead& noBoolean :
         {simulated::AttributeRead{}, simulated::AttributeRead{"yes"}, simulated::AttributeRead{false}}) {
        letter.overrides["AXEditable"] = noBoolean;
        EXPECT_EQ(summary(), "clipboard: ");
    }
    letter.role = "AXWebArea";
    EXPECT_EQ(summary(), "field: Dear Anna +token");
    letter.overrides["AXValue"] = Value{true};
    EXPECT_EQ(summary(), "clipboard: ");
}

TEST_F(Capture, LeavesPasswordsAndExcludedApplicationsAlone) {
    call("initialize",
         EncodableMap{{"excluded_apps", EncodableList{"ORG.example.writer", "org.example.WRITER"}}});
    field("Dear Anna", {0, 4});
    EXPECT_EQ(summary(), "nothing");
    EXPECT_EQ(world.beeps, 1);
    EXPECT_THAT(writer.reads, IsEmpty());

    call("initialize");
    auto& password = writer.addField(simulated::passwordField("hunter2"));
    password.selection = {0, 7};
    EXPECT_EQ(summary(), "nothing");
    EXPECT_EQ(world.beeps, 2);
    EXPECT_EQ(writer.reads.count("AXValue") + writer.reads.count("AXSelectedText"), 0u);
    EXPECT_THAT(writer.keystrokes, IsEmpty());
    world.bringHostToFront();
    EXPECT_EQ(summary(), "nothing") << "also in the application of the previous capture";
    EXPECT_EQ(world.beeps, 3);
}

TEST_F(Capture, InTheHostsOwnWindowMeansThePreviousApplication) {
    world.bringHostToFront();
    EXPECT_EQ(summary(), "nothing");
    EXPECT_TRUE(windowState().visible && windowState().key) << "with no application yet, the window is shown";

    auto& letter = field("Dear Anna", {0, 4});
    world.bringToFront(writer);
    EXPECT_EQ(summary(), "selection: Dear +token");
    world.bringHostToFront();
    EXPECT_EQ(summary(), "selection: Dear +token");
    letter.selection = {};
    EXPECT_EQ(summary(), "field: Dear Anna +token");
    EXPECT_THAT(world.postedEvents, IsEmpty()) << "a copy keystroke would reach the host itself";

    world.end(writer);
    EXPECT_EQ(summary(), "nothing");
    world.bringNothingToFront();
    EXPECT_EQ(summary(), "nothing");
}

TEST_F(Capture, ByACommandNeedsNoHotKeyOnlyAnInterfaceThatIsReady) {
    field("Dear Anna", {0, 4});
    world.userAsksForCapture();
    world.settle();
    EXPECT_THAT(calledMethods(), IsEmpty());
    world.hotKeys.taken.insert({49, platform::optionKey | platform::shiftKey});
    call("initialize");
    world.userAsksForCapture();
    world.settle();
    EXPECT_THAT(calledMethods(), ElementsAre("capture"));
}

TEST_F(Capture, WithoutPermissionSendsThePasteboardAndAsksForThePermission) {
    world.trusted = false;
    world.putOnPasteboard("from before");
    field("Dear Anna", {0, 4});
    EXPECT_EQ(summary(), "clipboard: from before");
    EXPECT_EQ(world.permissionPrompts, 1);
    EXPECT_THAT(world.postedEvents, IsEmpty());
    EXPECT_EQ(world.time(), 0us) << "no element is searched for";
}

TEST_F(Capture, SendsNoCopyKeystrokeToAnotherProgramThatHasComeToTheFront) {
    auto& other = world.openProgram({.name = "Other"});
    field("Dear Anna");
    writer.reactionTime = 5ms;
    world.after(12ms, [&] { world.bringToFront(other); });
    EXPECT_EQ(summary(), "field: Dear Anna +token");
    EXPECT_THAT(other.keystrokes, IsEmpty());
    EXPECT_THAT(writer.keystrokes, IsEmpty());
}

TEST_F(Capture, AsksASilentProgramToShowItsElementsAndTriesAgainEveryFiftyMilliseconds) {
    field("Dear Anna", {0, 4});
    writer.accessibility = Accessibility::shownWhenAsked;
    writer.showsAfter = 120ms;
    EXPECT_EQ(summary(), "selection: Dear +token");
    EXPECT_EQ(world.time(), 150ms);
    EXPECT_THAT(world.journal.entriesThatBeginWith("attribute"),
                ElementsAre(simulated::JournalEntry{0us, "attribute AXManualAccessibility of Writer"},
                            simulated::JournalEntry{0us, "attribute AXEnhancedUserInterface of Writer"}));
    EXPECT_EQ(summary(), "selection: Dear +token");
    EXPECT_EQ(world.time(), 150ms) << "once shown, at once";
}

TEST_F(Capture, TakesTheFocusOfTheWholeDesktopWhenAProgramStaysSilent) {
    field("unseen");
    writer.accessibility = Accessibility::missing;
    auto& other = world.openProgram({.name = "Other"});
    auto& elsewhere = other.addField({.value = "elsewhere", .selection = {0, 4}});
    world.systemWideFocus = Value{world.elementOf(elsewhere)};
    EXPECT_EQ(summary(), "selection: else");
    EXPECT_EQ(world.time(), 1500ms);
    EXPECT_EQ(writer.reads["AXFocusedUIElement"], 31);

    world.systemWideFocus = Value{};
    world.putOnPasteboard("from before");
    EXPECT_EQ(summary(), "clipboard: from before");
    EXPECT_THAT(world.postedEvents, IsEmpty());
}

TEST_F(Capture, LooksForTheFocusInTheProgramInFrontWhenNoProcessIsGiven) {
    const auto& letter = field("Dear Anna");
    EXPECT_TRUE(CFEqual(AX::focusedElement(), world.elementOf(letter)));
    world.bringNothingToFront();
    world.systemWideFocus = Value{world.elementOf(letter)};
    EXPECT_FALSE(AX::focusedElement());
    EXPECT_EQ(world.time(), 0us);
}
