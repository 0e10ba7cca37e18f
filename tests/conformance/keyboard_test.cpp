// Key codes, synthetic keystrokes and held modifiers.
#include "conformance/stage.h"
#include "support/keys.h"

#include <optional>

namespace conformance {
namespace {

using namespace platform;

// The key that types the character, together with the modifiers.
void press(char16_t character, CGEventFlags modifiers) {
    const auto key = keyThatTypes(character);
    ASSERT_TRUE(key.has_value());
    post(*key, modifiers);
}

struct KeyboardTest : testing::Test {
    Stage stage;
    Pasteboard& pasteboard = Pasteboard::generalPasteboard();

    void TearDown() override {
        stage.releaseAll();
        EXPECT_TRUE(stage.runUntil([] { return (Event::modifierFlags() & realModifiers) == 0; }))
            << "a modifier key is stuck";
    }

    bool pasteboardGets(std::string_view text) {
        return stage.runUntil([&] { return pasteboard.stringForType(PasteboardTypeString) == text; });
    }
};

TEST_F(KeyboardTest, KeysAreFoundByWhatTheyTypeAndCopySelectAllAndPaste) {
    EXPECT_EQ(keyThatTypes('a'), 0);
    EXPECT_EQ(keyThatTypes('c'), 8);
    EXPECT_EQ(keyThatTypes('v'), 9);
    EXPECT_EQ(keyThatTypes('C'), std::nullopt);

    const auto program = stage.open({.value = "Hello wrld", .selected = "wrld"});
    pasteboard.clearContents();
    press('c', kCGEventFlagMaskCommand);
    EXPECT_TRUE(pasteboardGets("wrld"));

    pasteboard.setString("Hello world", PasteboardTypeString);
    press('a', kCGEventFlagMaskCommand);
    EXPECT_TRUE(stage.runUntil([&] { return program->selected() == "Hello wrld"; }));
    press('v', kCGEventFlagMaskCommand);
    EXPECT_TRUE(stage.runUntil([&] { return program->value() == "Hello world"; })) << program->value();
}

TEST_F(KeyboardTest, HeldModifiersAreSeenWhileTheyAreHeld) {
    for (const CGEventFlags held :
         {kCGEventFlagMaskShift, kCGEventFlagMaskControl, kCGEventFlagMaskAlternate, kCGEventFlagMaskCommand,
          kCGEventFlagMaskShift | kCGEventFlagMaskAlternate}) {
        stage.hold(held);
        EXPECT_TRUE(stage.runUntil([&] { return (Event::modifierFlags() & realModifiers) == held; })) << held;
        stage.releaseAll();
        EXPECT_TRUE(stage.runUntil([] { return (Event::modifierFlags() & realModifiers) == 0; })) << held;
    }
}

TEST_F(KeyboardTest, GuardedKeystrokesArriveTogetherAtTheEndOfTheGuardOrNotAtAll) {
    using Against = KeystrokeGuard::Against;
    const struct {
        const char* what;
        std::function<void(OtherProgram&)> happens;
        Against against = Against::anyChange;
        bool typed = false;
    } cases[]{
        {"nothing", [](OtherProgram&) {}, Against::anyChange, true},
        {"another text", [](OtherProgram& it) { it.setValue("Hello other world"); }},
        {"another selection", [](OtherProgram& it) { it.select("Hello"); }},
        {"another field", [](OtherProgram& it) { it.leaveField(); }},
        {"a key", [this](OtherProgram&) { stage.press(38, 0); }},
        {"a modifier", [this](OtherProgram&) { stage.hold(kCGEventFlagMaskShift); }},
        {"another text", [](OtherProgram& it) { it.setValue("Hello other world"); }, Against::otherWindows,
         true},
    };
    for (const auto& [what, happens, against, typed] : cases) {
        const auto program = stage.open({.value = "Hello wrld", .selected = "wrld"});
        {
            KeystrokeGuard guard(program->pid(), against);
            press('x', 0);
            happens(*program);
            press('y', 0);
            EXPECT_EQ(program->value().find('x'), std::string::npos) << what;
            EXPECT_EQ(guard.deliver(), typed) << what;
        }
        stage.releaseAll();
        press('z', 0); // once this has arrived, all that was typed before has
        EXPECT_TRUE(stage.runUntil([&] { return program->value().find('z') != std::string::npos; })) << what;
        EXPECT_EQ(program->value().find("xyz") != std::string::npos, typed) << what << program->value();
        EXPECT_EQ(program->value().find('x') != std::string::npos, typed) << what << program->value();
    }
}

TEST_F(KeyboardTest, GuardedKeystrokesReachNoOtherWindow) {
    using Against = KeystrokeGuard::Against;
    for (const Against against : {Against::anyChange, Against::otherWindows}) {
        const auto program = stage.open({.value = ""});
        std::unique_ptr<OtherProgram> other;
        {
            KeystrokeGuard guard(program->pid(), against);
            press('x', 0);
            other = stage.open({.value = "", .title = "Other"});
            EXPECT_FALSE(guard.deliver());
        }
        press('z', 0);
        EXPECT_TRUE(stage.runUntil([&] { return other->value() == "z"; })) << other->value();
    }
}

} // namespace
} // namespace conformance
