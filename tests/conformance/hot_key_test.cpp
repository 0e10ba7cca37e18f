#include "conformance/stage.h"

#include <gtest/gtest.h>

namespace conformance {
namespace {

using namespace platform;

struct HotKeyTest : testing::Test {
    static constexpr std::uint32_t space = 49;
    static constexpr std::uint32_t mask = optionKey | shiftKey;
    static constexpr CGEventFlags heldForIt = kCGEventFlagMaskAlternate | kCGEventFlagMaskShift;

    static constexpr EventTypeSpec hotKeyPressed{kEventClassKeyboard, kEventHotKeyPressed};

    Stage stage;
    std::unique_ptr<OtherProgram> program = stage.open({.value = ""});
    int presses = 0;
    EventHandlerRef handler = install([this] {
        ++presses;
        return noErr;
    });

    static EventHandlerRef install(std::function<OSStatus()> handler, EventTypeSpec type = hotKeyPressed) {
        return InstallEventHandler(GetApplicationEventTarget(), std::move(handler), type);
    }
    static EventHotKeyRef registerKey(std::uint32_t keyCode, std::uint32_t modifiers) {
        return RegisterEventHotKey(keyCode, modifiers, {0x54455354, 1}, GetApplicationEventTarget(), 0);
    }

    bool pressed(int times) {
        return stage.runUntil([&] { return presses >= times; }) && presses == times;
    }
};

TEST_F(HotKeyTest, APressAnywhereRunsTheHandlerOnceAndKeepsTheKeyFromTheProgram) {
    const auto key = registerKey(space, mask);
    ASSERT_TRUE(handler && key);
    stage.press(space, heldForIt);
    EXPECT_EQ(presses, 0) << "a press arrives through the main queue";
    EXPECT_TRUE(pressed(1));
    stage.press(space, heldForIt);
    EXPECT_TRUE(pressed(2));
    stage.runABit();
    EXPECT_EQ(presses, 2);
    EXPECT_EQ(program->value(), "");
}

TEST_F(HotKeyTest, APressRunsTheNewestHandlerFirstAndTheOthersUntilOneHandlesIt) {
    const auto key = registerKey(space, mask);
    std::string ran;
    const auto add = [&](char name, OSStatus result) {
        return install([&ran, name, result] {
            ran += name;
            return result;
        });
    };
    auto second = add('2', noErr);
    const auto third = add('3', eventNotHandledErr);
    auto fourth = install([&] {
        ran += '4';
        second.reset(); // must not run for this press any more
        return eventNotHandledErr;
    });
    for (const auto& [expected, expectedPresses] : {std::pair("43", 1), std::pair("4343", 2)}) {
        stage.press(space, heldForIt);
        EXPECT_TRUE(pressed(expectedPresses));
        EXPECT_EQ(ran, expected);
    }
    fourth.reset();
    second = add('2', noErr);
    stage.press(space, heldForIt);
    EXPECT_TRUE(stage.runUntil([&] { return ran == "43432"; })) << ran;
    EXPECT_EQ(presses, 2) << "it was handled before";

    EXPECT_FALSE(install([] { return noErr; }, {kEventClassKeyboard, kEventHotKeyPressed + 1}));
}

TEST_F(HotKeyTest, OtherModifiersAreAnotherCombination) {
    const auto key = registerKey(space, mask);
    stage.press(space, kCGEventFlagMaskShift);
    stage.press(space, heldForIt | kCGEventFlagMaskControl);
    stage.runABit();
    EXPECT_EQ(presses, 0);
}

TEST_F(HotKeyTest, OneHeldByAnotherProgramIsRefusedUntilItIsFree) {
    auto others = stage.takeHotKey(space, mask);
    EXPECT_FALSE(registerKey(space, mask));
    EXPECT_TRUE(registerKey(space, mask | controlKey));
    others.reset();
    EXPECT_TRUE(stage.runUntil([] { return registerKey(space, mask) != nullptr; }));
}

TEST_F(HotKeyTest, OneGivenBackIsSilentAndCanBeHadAgain) {
    auto key = registerKey(space, mask);
    ASSERT_TRUE(key);
    EXPECT_FALSE(registerKey(space, mask)) << "it is taken, if only by ourselves";
    stage.press(space, heldForIt);
    key.reset(); // a press that nobody has been told of yet goes with its registration
    stage.press(space, heldForIt);
    stage.runABit();
    EXPECT_EQ(presses, 0);
    EXPECT_TRUE(stage.takeHotKey(space, mask)) << "another program may have it now";
    key = registerKey(space, mask);
    ASSERT_TRUE(key);
    stage.press(space, heldForIt);
    EXPECT_TRUE(pressed(1));

    handler.reset();
    stage.press(space, heldForIt);
    stage.runABit();
    EXPECT_EQ(presses, 1) << "a removed handler is not called";
}

} // namespace
} // namespace conformance
