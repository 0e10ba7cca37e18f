// Other programs: which one is in front, and what is in its focused field.
#include "conformance/stage.h"
#include "platform/accessibility.h"
#include "platform/workspace.h"

#include <gtest/gtest.h>

namespace conformance {
namespace {

using namespace platform;

struct ProgramTest : testing::Test {
    Stage stage;

    // Absent also when the attribute is of another kind.
    template <class Kind>
    static std::optional<Kind> get(const AXUIElementRef& element, std::string_view attribute) {
        const auto value = AXUIElementCopyAttributeValue(element, attribute);
        const auto* found = value ? std::get_if<Kind>(&*value) : nullptr;
        return found != nullptr ? std::optional(*found) : std::nullopt;
    }
    static constexpr auto text = get<std::string>;

    static AXUIElementRef elementOf(const AXUIElementRef& element, std::string_view attribute) {
        return get<AXUIElementRef>(element, attribute).value_or(AXUIElementRef{});
    }
    static AXUIElementRef focusedElement(const OtherProgram& program) {
        return elementOf(AXUIElementCreateApplication(program.pid()), "AXFocusedUIElement");
    }

    static std::optional<CFRange> range(const AXUIElementRef& element) {
        const auto boxed = get<AXValue>(element, "AXSelectedTextRange");
        return boxed ? AXValueGetValue(*boxed, AXValueType::cfRange) : std::nullopt;
    }

    static std::optional<RunningApplication> frontmost() {
        return Workspace::sharedWorkspace().frontmostApplication();
    }
};

TEST_F(ProgramTest, TheOneInFrontIsKnownByItsProcessAndOutlivesItAsAHandle) {
    auto program = stage.open({.value = "text"});
    const auto found = frontmost();
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->processIdentifier(), program->pid());
    EXPECT_FALSE(found->bundleIdentifier().value_or("").empty());
    EXPECT_FALSE(found->localizedName().value_or("").empty());
    EXPECT_TRUE(*found == *frontmost());
    EXPECT_FALSE(*found == RunningApplication::currentApplication());
    EXPECT_FALSE(found->isTerminated());
    EXPECT_FALSE(RunningApplication::currentApplication().isTerminated());

    program->kill();
    EXPECT_TRUE(stage.runUntil([&] { return found->isTerminated(); }));
    EXPECT_EQ(found->processIdentifier(), program->pid());
}

TEST_F(ProgramTest, AnEarlierOneComesBackToTheFrontWhenAsked) {
    const auto first = stage.open({.value = "first"});
    const auto handle = frontmost();
    ASSERT_TRUE(handle.has_value());
    const auto second = stage.open({.value = "second"});
    ASSERT_EQ(frontmost()->processIdentifier(), second->pid());
    EXPECT_FALSE(frontmost() == handle);
    EXPECT_TRUE(handle->activateFromApplication(RunningApplication::currentApplication()));
    EXPECT_TRUE(stage.runUntil([&] { return frontmost() == handle; }));

    first->kill();
    EXPECT_TRUE(stage.runUntil([&] { return handle->isTerminated(); }));
    EXPECT_FALSE(handle->activateFromApplication(RunningApplication::currentApplication()));
}

TEST_F(ProgramTest, ItsFocusedFieldShowsKindTextAndSelection) {
    const struct {
        FieldKind kind;
        const char *selected, *role;
        bool editable;
    } cases[] = {{FieldKind::text, "Anna", "AXTextArea", true},
                 {FieldKind::text, "", "AXTextArea", true},
                 {FieldKind::line, "Anna", "AXTextField", true},
                 {FieldKind::readOnly, "Anna", "AXTextField", false}};
    for (const auto& [kind, selected, role, editable] : cases) {
        const auto program = stage.open({.kind = kind, .value = "Grüße an Anna", .selected = selected});
        const auto field = focusedElement(*program);
        ASSERT_TRUE(field);
        EXPECT_EQ(text(field, "AXRole"), role);
        EXPECT_NE(text(field, "AXSubrole"), "AXSecureTextField");
        EXPECT_EQ(get<bool>(field, "AXEditable").value_or(false), editable);
        EXPECT_EQ(text(field, "AXValue"), "Grüße an Anna");
        EXPECT_EQ(text(field, "AXSelectedText").value_or(""), selected);
        ASSERT_TRUE(range(field).has_value());
        EXPECT_EQ(range(field)->length, std::string_view(selected).size());
        EXPECT_FALSE(AXUIElementCopyAttributeValue(field, "AXNoSuchThing").has_value());
    }
}

TEST_F(ProgramTest, APasswordFieldSaysSoAndKeepsItsText) {
    const auto program = stage.open({.kind = FieldKind::password, .value = "secret", .selected = "secret"});
    const auto field = focusedElement(*program);
    EXPECT_EQ(text(field, "AXSubrole"), "AXSecureTextField");
    EXPECT_NE(text(field, "AXValue"), "secret");
    EXPECT_NE(text(field, "AXSelectedText"), "secret");
}

TEST_F(ProgramTest, ElementsAreEqualWhenTheyAreTheSameElement) {
    const auto program = stage.open({.value = "text", .title = "Shopping list"});
    const auto application = AXUIElementCreateApplication(program->pid());
    const auto field = focusedElement(*program);
    const auto window = elementOf(application, "AXFocusedWindow");
    ASSERT_TRUE(field && window);
    EXPECT_EQ(text(window, "AXTitle"), "Shopping list");
    EXPECT_TRUE(CFEqual(field, focusedElement(*program)));
    EXPECT_TRUE(CFEqual(window, elementOf(application, "AXFocusedWindow")));
    EXPECT_TRUE(CFEqual(field, elementOf(AXUIElementCreateSystemWide(), "AXFocusedUIElement")));
    EXPECT_FALSE(CFEqual(field, window));

    const auto other = stage.open({.value = "text", .title = "Shopping list"});
    EXPECT_FALSE(CFEqual(field, focusedElement(*other)));
    EXPECT_FALSE(CFEqual(window, elementOf(AXUIElementCreateApplication(other->pid()), "AXFocusedWindow")));
}

TEST_F(ProgramTest, OneThatDoesNotAnswerCostsABoundedTimeAndYieldsNothing) {
    for (const auto end : {&OtherProgram::hang, &OtherProgram::kill}) {
        SCOPED_TRACE(end == &OtherProgram::hang ? "hung" : "dead");
        const auto program = stage.open({.value = "text", .selected = "text"});
        const auto application = AXUIElementCreateApplication(program->pid());
        const auto field = focusedElement(*program);
        ASSERT_TRUE(field);
        ((*program).*end)();
        const TimePoint start = now();
        EXPECT_FALSE(text(field, "AXValue").has_value());
        EXPECT_FALSE(elementOf(application, "AXFocusedUIElement"));
        elementOf(application, "AXFocusedWindow"); // a desktop may know it without the program
        EXPECT_LT(now() - start, Seconds{2});
    }
}

TEST_F(ProgramTest, AnEmptyHandleReadsNothingAndIsEqualToNone) {
    EXPECT_FALSE(CFEqual({}, {}));
    EXPECT_FALSE(AXUIElementCopyAttributeValue({}, "AXValue").has_value());
    EXPECT_FALSE(AXUIElementSetAttributeValue({}, "AXManualAccessibility", true));
    EXPECT_TRUE(AXIsProcessTrustedWithOptions({}));
}

} // namespace
} // namespace conformance
