// The synthetic copy and its keystrokes: the user's pasteboard comes through it whole.
#include "capture/ax.h"
#include "platform/simulated/world.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using simulated::Item;
using simulated::JournalEntry;
using simulated::KeyboardLayout;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct CopySelection : testing::Test {
    simulated::World world;
    simulated::Program& writer = world.openProgram({.name = "Writer"});
    simulated::Field& letter = writer.addField({.value = " Dear Anna", .selection = {0, 5}});

    const std::vector<Item> before{
        {simulated::text("plain"), simulated::bytes("text/html", {'<', 'b', '>', 0}),
         simulated::withoutData("promised"), simulated::bytes("empty", {})},
        {},
        {simulated::bytes("image/png", std::vector<std::uint8_t>(100'000, 7))},
    };

    CopySelection() {
        world.bringToFront(writer);
        world.putOnPasteboard(before);
    }
    void expectPasteboardRestored() {
        auto kept = before;
        kept[0].erase(kept[0].begin() + 2); // what its owner could not produce
        EXPECT_EQ(world.pasteboardItems(), kept);
    }
};

constexpr auto command = platform::kCGEventFlagMaskCommand;

} // namespace

TEST_F(CopySelection, ReturnsTheTextUnchangedAndPutsThePasteboardBack) {
    writer.keystrokesActAfter = 90ms;
    const auto changes = platform::Pasteboard::generalPasteboard().changeCount();
    EXPECT_EQ(AX::copySelectionViaClipboard(), " Dear");
    EXPECT_EQ(world.time(), 100ms) << "found at the first poll after the program has copied";
    EXPECT_THAT(writer.keystrokes, ElementsAre(simulated::Keystroke{8, command}));
    EXPECT_NE(platform::Pasteboard::generalPasteboard().changeCount(), changes);
    EXPECT_THAT(world.journal.entriesThatBeginWith("pasteboard cleared"),
                ElementsAre(JournalEntry{0us, "pasteboard cleared by Quillmark"},
                            JournalEntry{100ms, "pasteboard cleared by Quillmark"}));
    expectPasteboardRestored();
}

TEST_F(CopySelection, WaitsFourHundredMillisecondsForTextAndNoLonger) {
    for (const auto copies : {simulated::Copies::nothing, simulated::Copies::image}) {
        const auto start = world.time();
        letter.copies = copies;
        EXPECT_EQ(AX::copySelectionViaClipboard(), std::nullopt);
        EXPECT_EQ(world.time() - start, 400ms);
        expectPasteboardRestored();
    }
    world.after(30ms, [&] { world.putOnPasteboard(""); });
    world.after(70ms, [&] { world.putOnPasteboard("late"); });
    EXPECT_EQ(AX::copySelectionViaClipboard(), "late") << "an empty text is none";
    letter.copies = simulated::Copies::selection;
    world.after(50ms, [&] { world.end(writer); });
    writer.keystrokesActAfter = 60ms;
    EXPECT_EQ(AX::copySelectionViaClipboard(), std::nullopt);
    expectPasteboardRestored();
}

TEST_F(CopySelection, LeavesAnEmptyPasteboardEmpty) {
    for (const bool readable : {true, false}) {
        world.emptyPasteboard();
        world.pasteboard.readable = readable;
        world.after(1ms, [&] { world.pasteboard.readable = true; });
        world.journal.clear();
        EXPECT_EQ(AX::copySelectionViaClipboard(), " Dear");
        EXPECT_THAT(world.pasteboardItems(), IsEmpty());
        EXPECT_EQ(world.journal.entriesThatBeginWith("pasteboard").size(), 3u) << "cleared, copied, cleared";
    }
}

TEST_F(CopySelection, UsesTheKeyThatTypesTheLetterOnTheUsersLayout) {
    const auto keyOf = [&](KeyboardLayout layout, std::string_view character) {
        world.layouts = {std::move(layout)};
        return AX::keyCode(character);
    };
    EXPECT_EQ(keyOf(KeyboardLayout::us(), "c"), 8);
    EXPECT_EQ(keyOf(KeyboardLayout::azerty(), "a"), 12);
    EXPECT_EQ(keyOf(KeyboardLayout::dvorak(), "c"), 34);
    EXPECT_EQ(keyOf(KeyboardLayout::us(), "C"), std::nullopt) << "needs Shift";
    EXPECT_EQ(keyOf(KeyboardLayout::withoutC(), "c\u0327"), 8) << "canonically equal to what the key types";

    auto twice = KeyboardLayout::us();
    twice.keys[3] = u"cx";
    twice.brokenKeys = {1};
    EXPECT_EQ(keyOf(twice, "c"), 3) << "the lowest key, by the first character it types";

    auto withoutData = KeyboardLayout::us();
    withoutData.hasData = false;
    for (const auto& layout : {KeyboardLayout::usWithDeadC(), KeyboardLayout::withoutC(),
                               KeyboardLayout::cyrillic(), withoutData}) {
        writer.keystrokes.clear();
        EXPECT_EQ(keyOf(layout, "c"), std::nullopt);
        AX::postKey("c", 8, command);
        EXPECT_THAT(writer.keystrokes, ElementsAre(simulated::Keystroke{8, command}))
            << "the fallback position";
    }
    world.layouts.clear();
    EXPECT_EQ(AX::keyCode("c"), std::nullopt);
}

TEST_F(CopySelection, PostsBothHalvesOfAKeystrokeOrNeither) {
    AX::postKey("v", 9, command);
    ASSERT_EQ(world.postedEvents.size(), 2u);
    EXPECT_TRUE(world.postedEvents[0].keyDown && !world.postedEvents[1].keyDown);
    EXPECT_EQ(world.postedEvents[0].flags, command);
    EXPECT_EQ(world.postedEvents[1].flags, command);

    for (const bool refusedHalf : {true, false}) {
        world.postedEvents.clear();
        world.refusesKeyEvent = [=](auto, bool keyDown) { return keyDown == refusedHalf; };
        AX::postKey("v", 9, command);
        EXPECT_THAT(world.postedEvents, IsEmpty());
    }
    world.refusesKeyEvent = nullptr;
    world.hasEventSource = false;
    AX::postKey("v", 9, command);
    EXPECT_EQ(world.postedEvents.size(), 2u) << "a missing source is no reason not to type";
}
