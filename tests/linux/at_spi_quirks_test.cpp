// What each toolkit says differently on the accessibility bus, played by a program that says it from a
// script: what the host makes of it decides which text is captured, and which one is replaced.
#include "linux/run_until.h"
#include "platform/accessibility.h"
#include "platform/linux/at_spi/accessibility_bus.h"
#include "platform/linux/x11/pasteboard/primary.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/scripted_elements.h"

#include <gtest/gtest.h>

#include <ostream>

namespace platform {

void PrintTo(const CFRange& range, std::ostream* out) { *out << range.location << '+' << range.length; }

namespace {

using namespace std::chrono_literals;
using testbed::ScriptedElements;
using Options = std::vector<std::string>;

template <class Kind>
std::optional<Kind> get(const AXUIElementRef& element, std::string_view attribute) {
    const auto value = AXUIElementCopyAttributeValue(element, attribute);
    const auto* found = value ? std::get_if<Kind>(&*value) : nullptr;
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

AXUIElementRef application(const testbed::DrivenProgram& program) {
    return AXUIElementCreateApplication(program.process().pid());
}

AXUIElementRef focusedElement(const testbed::DrivenProgram& program) {
    return get<AXUIElementRef>(application(program), "AXFocusedUIElement").value_or(AXUIElementRef{});
}

std::optional<std::string> text(const AXUIElementRef& element) {
    return get<std::string>(element, "AXValue");
}
std::optional<std::string> selection(const AXUIElementRef& element) {
    return get<std::string>(element, "AXSelectedText");
}
std::optional<CFRange> range(const AXUIElementRef& element) {
    const auto boxed = get<AXValue>(element, "AXSelectedTextRange");
    return boxed ? AXValueGetValue(*boxed, AXValueType::cfRange) : std::nullopt;
}
bool isSecure(const AXUIElementRef& element) {
    return get<std::string>(element, "AXSubrole") == "AXSecureTextField";
}
bool isEditable(const AXUIElementRef& element) { return get<bool>(element, "AXEditable").value_or(false); }

struct Quirks : testing::Test {
    void SetUp() override {
        auto& accessibility = at_spi::AccessibilityBus::shared();
        accessibility.keepListening();
        ASSERT_TRUE(AXIsProcessTrustedWithOptions({.kAXTrustedCheckOptionPrompt = true}))
            << accessibility.whyNot();
    }

    testbed::Desktop desktop;
};

// What is read of the one element that is focused.
struct Reading {
    const char* what;
    Options options;
    const char* script;
    std::optional<std::string> text, selection;
    std::optional<CFRange> range;
    std::string role = "AXTextArea";
    bool editable = true;
};

const Options chromium{"toolkit=Chromium"};
const Options gecko{"toolkit=Gecko", "unselected=0"};
const Options qt5{"toolkit=Qt", "collection=no_object", "unselected=caret"};
const Options gtk4{"toolkit=GTK", "collection=no_interface", "unselected=error", "end_of_text=empty"};
const Options gtk3{"toolkit=gtk", "unselected=caret"};

const Reading readings[]{
    {"Chromium reports offsets behind an emoji too low", chromium, R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="say 😀 word" caret=10 selection=5,9)",
     "say 😀 word", "word", CFRange{6, 4}},
    {"Chromium: of two ranges that can be meant none is taken", chromium, R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="a 😀 b" caret=0 selection=0,2)",
     std::nullopt, std::nullopt, std::nullopt},
    {"Chromium lists the runs of a text as children, too", chromium, R"(
window frame active showing
  field section focusable focused editable showing multi_line text="￼￼" caret=0
    p1 paragraph showing text="one"
      run1 static showing text="one"
    p2 paragraph showing text="two ￼ three"
      run2 static showing text="two "
      bold static showing
      link section showing text="bold")",
     "one\ntwo \nbold\n three", "", CFRange{0, 0}, "something"},
    {"Firefox puts a filler behind an emoji, and counts it", gecko, R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="say 😀\F word" caret=11 selection=7,11)",
     "say 😀 word", "word", CFRange{7, 4}},
    {"Firefox gives a long text only when it is asked again",
     {"toolkit=Gecko", "first_text=empty"},
     R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="a long text" caret=0)",
     "a long text",
     "",
     CFRange{0, 0}},
    {"Firefox has the caret nowhere", gecko, R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="words" caret=-1)",
     "words", "", std::nullopt},
    {"a browser's search field is marked in its attributes", gecko, R"(
window frame active showing
  field entry focusable focused editable showing single_line text="words" caret=0 attributes=text-input-type:search)",
     "words", "", CFRange{0, 0}, "AXSearchField"},
    {"a browser's rich text is read with its paragraphs, lists and links", gecko, R"(
window frame active showing
  field section focusable focused editable showing multi_line text="￼￼￼" caret=0
    p1 paragraph showing text="one ￼ of many"
      link text showing text="link"
    p2 list showing text="￼￼"
      i1 list_item showing text="first"
      i2 list_item showing text="second"
    p3 paragraph showing text="last\n")",
     "one link of many\nfirst\nsecond\nlast", "", CFRange{0, 0}, "something"},
    {"a selection over paragraphs is read from each", gecko, R"(
window frame active showing
  field section focusable focused editable showing multi_line text="￼￼￼￼" caret=0 selection=1,4
    p1 paragraph showing text="zero"
    p2 paragraph showing text="one two" selection=4,7
    p3 paragraph showing text="three"
    p4 paragraph showing text="four five" selection=0,4)",
     "zero\none two\nthree\nfour five", "two\nthree\nfour", CFRange{1, 3}, "something"},
    {"a picture would be lost with a rewritten text", gecko, R"(
window frame active showing
  field section focusable focused editable showing multi_line text="￼￼" caret=0 selection=0,2
    p1 paragraph showing text="one ￼" selection=0,5
      picture image showing
    p2 paragraph showing text="two" selection=0,3)",
     std::nullopt, std::nullopt, CFRange{0, 2}, "something"},
    {"a page's own text goes without what is in it", chromium, R"(
window frame active showing
  page document_web focusable focused showing text="￼ and ￼" caret=-1
    p1 paragraph showing text="one"
    p2 paragraph showing text="two")",
     " and ", "", std::nullopt, "AXWebArea", false},
    {"Qt 5 cannot search, and its fillers and tabs have the focus, too", qt5, R"(
window filler active showing
  tabs page_tab focused showing
    filler filler focused showing
      hidden text focusable focused editable text=hidden
      field text focusable focused editable showing multi_line text="one two" caret=7 selection=4,7)",
     "one two", "two", CFRange{4, 3}},
    {"Qt 5: the field in a combo box", qt5, R"(
window filler active showing
  box combo_box focusable focused showing
    field text focusable focused editable showing single_line text="chosen" caret=2)",
     "chosen", "", CFRange{2, 0}, "AXTextField"},
    {"Qt 5 says that a read-only field is editable", qt5, R"(
window filler active showing
  field text focusable focused editable read_only showing multi_line text="words" caret=0)",
     "words", "", CFRange{0, 0}, "AXTextArea", false},
    {"GTK 4 says of windows only that they show, and ends a text at its start", gtk4, R"(
window frame active showing visible
  box panel visible
    hidden panel
      other text focusable focused editable multi_line text="not on the screen" caret=0
    field text focusable focused editable visible text="one two" caret=7 selection=4,7)",
     "one two", "two", CFRange{4, 3}, "AXTextField"},
    {"GTK 4: a field in which nothing is selected", gtk4, R"(
window frame active showing visible
  field text focusable focused editable visible text="one two" caret=7)",
     "one two", "", CFRange{7, 0}, "AXTextField"},
    {"GTK 3 leaves a picture out of the text and counts it", gtk3, R"(
window frame active showing
  field text focusable focused editable showing multi_line text="one ￼ two" caret=9 selection=4,9)",
     std::nullopt, std::nullopt, CFRange{4, 5}},
    {"what is typed into a terminal does not replace a selection", gtk3, R"(
window frame active showing
  field terminal focusable focused showing multi_line text="$ make" caret=6 selection=2,6)",
     "$ make", "make", std::nullopt, "something", false},
    {"a page in a web view, which no search reaches", gtk3, R"(
window frame active showing
  view panel focused showing
    field entry focusable focused editable showing multi_line unsearched=yes text="in the page" caret=0)",
     "in the page", "", CFRange{0, 0}},
};

TEST_F(Quirks, OfTextsAreReadAsTheyAreMeant) {
    for (const Reading& expected : readings) {
        SCOPED_TRACE(expected.what);
        const ScriptedElements program(desktop, expected.options, expected.script);
        const auto field = focusedElement(program);
        EXPECT_EQ(get<std::string>(field, "AXRole"), expected.role);
        EXPECT_EQ(isEditable(field), expected.editable);
        EXPECT_EQ(text(field), expected.text);
        EXPECT_EQ(selection(field), expected.selection);
        EXPECT_EQ(range(field), expected.range);
        EXPECT_FALSE(isSecure(field));
    }
}

TEST_F(Quirks, NothingIsReadFromAPasswordField) {
    const std::pair<Options, const char*> cases[]{
        {gecko,
         R"(field password_text focusable focused editable showing text="••••••" caret=6 selection=0,6)"},
        {qt5, R"(field password_text focusable focused editable showing role_name=text text="" caret=6)"},
        {gtk4, R"(field password_text focusable focused editable visible text=secret caret=6)"},
        // GTK 4: an entry that hides its text is an entry like any other.
        {gtk4, R"(field text focusable focused editable visible text="••••••" caret=6 selection=0,6)"}};
    for (const auto& [options, field] : cases) {
        SCOPED_TRACE(field);
        ScriptedElements program(desktop, options,
                                 std::string("window frame active showing visible\n  ") + field);
        const auto element = focusedElement(program);
        EXPECT_TRUE(isSecure(element));
        EXPECT_EQ(text(element), std::nullopt);
        EXPECT_EQ(selection(element), std::nullopt);
    }
}

// LibreOffice Writer, where every paragraph is an object of its own.
TEST_F(Quirks, APartOfASelectionIsNotTheSelection) {
    const struct {
        const char *what, *above, *focused, *below, *selectedParagraphs;
        std::optional<std::string> selection;
    } cases[]{
        {"inside", "", "caret=7 selection=4,7", "", "1", "two"},
        {"the whole paragraph", "", "caret=13 selection=0,13", "", "1", "one two three"},
        {"nothing", "", "caret=4", "", "0", ""},
        {"downwards from the one above", "selection=2,5", "caret=7 selection=0,7", "", "2", std::nullopt},
        {"upwards from the one below", "", "caret=4 selection=4,13", "selection=0,3", "2", std::nullopt},
        {"upwards from the start of the one below", "", "caret=0 selection=0,13", "unselected=0", "1",
         std::nullopt},
        {"downwards from the end of the one above", "unselected=0", "caret=7 selection=0,7", "", "1",
         std::nullopt},
        {"another piece, elsewhere", "", "caret=7 selection=4,7", "", "2", std::nullopt},
    };
    for (const auto& [what, above, focused, below, selectedParagraphs, expected] : cases) {
        SCOPED_TRACE(what);
        const std::string script =
            "window frame active showing\n"
            "  panel panel focused showing\n"
            "    document document_text showing manages_descendants selected_children=" +
            std::string(selectedParagraphs) + "\n      p1 paragraph focusable editable showing text=above " +
            above +
            "\n      p2 paragraph focusable focused editable showing multi_line text=\"one two three\" "
            "flows_from=p1 flows_to=p3 " +
            focused + "\n      p3 paragraph focusable editable showing text=below " + below;
        ScriptedElements program(desktop, {"toolkit=gtk", "program=soffice"}, script);
        const auto paragraph = focusedElement(program);
        EXPECT_EQ(text(paragraph), "one two three");
        EXPECT_EQ(selection(paragraph), expected);
        EXPECT_FALSE(isEditable(paragraph)) << "select all would select the whole document";
    }
}

// LibreOffice Calc would look through a thousand million cells.
TEST_F(Quirks, ASpreadsheetIsNotSearched) {
    ScriptedElements program(desktop, {"toolkit=gtk", "program=soffice"}, R"(
window frame active showing
  sheet table focusable focused showing manages_descendants
    cell text focusable focused editable showing text=wrong)");
    const auto element = focusedElement(program);
    EXPECT_TRUE(element);
    EXPECT_EQ(text(element), std::nullopt);
    EXPECT_EQ(program.calls("GetMatches"), 0);
}

// Of Calc, where a walk to the cell takes two thousand calls, and Firefox, of the address bar.
TEST_F(Quirks, WhatGainsTheFocusWithoutAnEventIsLookedForOnceUntilTheFocusMoves) {
    for (const Options& options : {Options{"toolkit=gtk", "program=soffice"}, gecko}) {
        ScriptedElements program(desktop, options, R"(
window frame active showing
  panel panel focused showing
    cell table_cell focusable focused showing
  line text focusable editable showing text=formula)");
        program.command("focus panel");
        EXPECT_TRUE(focusedElement(program)); // the event has arrived by its end
        EXPECT_TRUE(focusedElement(program));
        const int calls = program.calls("GetChildren");
        program.command("focus panel"); // as when a hot key has taken the keyboard for a moment
        EXPECT_TRUE(focusedElement(program));
        EXPECT_EQ(program.calls("GetChildren"), calls);
        program.command("change line focused");
        program.command("focus line");
        EXPECT_EQ(text(focusedElement(program)), "formula");
    }
}

constexpr const char* browser = R"(
window frame active showing name="A page"
  bar entry focusable editable showing single_line text="address" caret=0
  page document_web focusable showing text="￼￼"
    first entry focusable focused editable showing single_line text="first" caret=0
    second entry focusable editable showing single_line text="second" caret=0
other frame showing
  third entry focusable focused editable showing single_line text="in the other window" caret=0)";

TEST_F(Quirks, TheFocusIsWhereItsLastEventWas) {
    ScriptedElements program(desktop, chromium, browser);
    EXPECT_EQ(text(focusedElement(program)), "first") << "found by a search, without an event";
    EXPECT_EQ(program.calls("GetMatches"), 1);
    program.command("change bar focused"); // and the page's field says that it has it, too
    program.command("focus bar");
    EXPECT_EQ(text(focusedElement(program)), "address");
    program.command("change second focused");
    program.command("focus second");
    EXPECT_EQ(text(focusedElement(program)), "second");
    program.command("focus third"); // as if the other window had been in front
    EXPECT_EQ(text(focusedElement(program)), "second") << "it is not in the active window";
    program.command("change second -focused");
    EXPECT_EQ(text(focusedElement(program)), "address");
    EXPECT_EQ(program.calls("GetMatches"), 1) << "pages of 20,000 paragraphs take seconds to search";
}

// Else the field would be replaced as a whole, with all in it that is not selected.
TEST_F(Quirks, ABrowserMayShowASelectionLaterThanThePersonSeesIt) {
    for (const bool isSoon : {true, false}) {
        ScriptedElements program(desktop, chromium, R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="one two" caret=7)");
        EXPECT_EQ(text(focusedElement(program)), "one two");
        program.command(isSoon ? "select field 4,7 0.03" : "select field 4,7 60");
        const auto field = focusedElement(program);
        EXPECT_EQ(text(field), isSoon ? std::optional("one two") : std::nullopt);
        if (isSoon) {
            EXPECT_EQ(selection(field), "two");
        }
        EXPECT_EQ(text(focusedElement(program)), "one two") << "it was waited for long enough";
        program.command("slow GetNSelections 0.4");
        EXPECT_EQ(text(focusedElement(program)), std::nullopt) << "it may have one again";
    }
    ScriptedElements program(desktop, chromium, R"(
window frame active showing
  field entry focusable focused editable showing multi_line text="one two" caret=7)");
    program.command("select field 0,7 60");
    selection::primaryIsPastedOver();
    EXPECT_EQ(text(focusedElement(program)), "one two") << "the selection has gone, though PRIMARY stays";
}

TEST_F(Quirks, ASelectionThatMovesWhileItIsReadIsReadWhereItThenIs) {
    ScriptedElements program(desktop, gtk3, R"(
window frame active showing
  field text focusable focused editable showing multi_line text="one two" caret=3 selection=0,3)");
    EXPECT_EQ(selection(focusedElement(program)), "one");
    const auto field = focusedElement(program); // which has said where its selection is
    program.command("select field 4,7 0");
    program.calls("GetText"); // by its end, the selection has moved
    EXPECT_EQ(selection(field), "two");
    EXPECT_EQ(range(field), (CFRange{4, 3}));
}

TEST_F(Quirks, TheCurrentCellOfATableIsNotTheFocusWhileAFieldHasIt) {
    ScriptedElements program(desktop, {"toolkit=Qt", "collection=no_object"}, R"(
window frame active showing
  files table focusable showing
    cell table_cell focusable focused showing
  document text focusable focused editable showing multi_line text=document caret=0)");
    program.command("focus document");
    program.command("focus cell");
    EXPECT_EQ(text(focusedElement(program)), "document");
    program.command("change document -focused");
    EXPECT_TRUE(focusedElement(program)) << "the cell";
    EXPECT_EQ(text(focusedElement(program)), std::nullopt);
}

TEST_F(Quirks, AProgramThatIsNotInFrontHasTheFocusWhereItsLastEventWas) {
    ScriptedElements program(desktop, gecko, browser);
    EXPECT_EQ(text(focusedElement(program)), "first");
    program.command("change first -focused");
    program.command("focus second");
    program.command("change window -active");
    const testbed::Fields front(desktop, {"entry"});
    EXPECT_EQ(text(focusedElement(program)), "second");
}

TEST_F(Quirks, ALongSearchIsMadeOnceAndItsResultIsUsed) {
    ScriptedElements program(desktop, gecko, browser);
    program.command("slow GetMatches 0.7");
    EXPECT_FALSE(focusedElement(program));
    EXPECT_TRUE(runUntil([&] { return text(focusedElement(program)) == "first"; }));
    EXPECT_EQ(program.calls("GetMatches"), 1);
}

TEST_F(Quirks, ChromiumShowsItsElementsOnceItsWindowsAttributesWereAskedFor) {
    for (const bool comesToTheFront : {false, true}) {
        ScriptedElements program(desktop, {"toolkit=Chromium", "asleep=yes"}, browser);
        EXPECT_FALSE(focusedElement(program));
        if (comesToTheFront)
            program.command("activate window");
        else
            EXPECT_TRUE(AXUIElementSetAttributeValue(application(program), "AXManualAccessibility", true));
        EXPECT_TRUE(runUntil([&] { return text(focusedElement(program)) == "first"; })) << comesToTheFront;
    }
}

TEST_F(Quirks, ChromiumHasNoActiveWindowAtFirst) {
    ScriptedElements program(desktop, chromium, browser);
    program.command("change window -active");
    program.command("change third -focused");
    EXPECT_EQ(text(focusedElement(program)), "first");
}

TEST_F(Quirks, AProgramWithoutElementsHasItsWindowForOne) {
    const struct {
        const char* what;
        Options options;
        const char* script;
        bool atOnce;
    } cases[]{
        {"it shows none although it was asked to", {"title=Letter"}, "window frame active showing", false},
        {"it is on the bus for other purposes", {"title=Letter", "objects=none"}, "window frame", true}};
    for (const auto& [what, options, script, atOnce] : cases) {
        SCOPED_TRACE(what);
        ScriptedElements program(desktop, options, script);
        EXPECT_EQ(static_cast<bool>(focusedElement(program)), atOnce);
        AXUIElementSetAttributeValue(application(program), "AXManualAccessibility", true);
        EXPECT_TRUE(runUntil([&] { return static_cast<bool>(focusedElement(program)); }));
        EXPECT_EQ(get<std::string>(focusedElement(program), "AXTitle"), "Letter");
        EXPECT_EQ(text(focusedElement(program)), std::nullopt);
        program.command("slow GetChildren 0.4");
        EXPECT_EQ(static_cast<bool>(focusedElement(program)), atOnce) << "a busy program may have elements";
    }
}

// The bus knows the sandbox's process only, so that the window's title has to tell.
TEST_F(Quirks, ASandboxedProgramIsFoundByItsTitle) {
    const ScriptedElements inside(
        desktop, {"title=none", "process=xdg-dbus-proxy"},
        "window frame active showing name=Sandboxed\n"
        "  field text focusable focused editable showing multi_line text=inside caret=0");
    const testbed::Process outside({"xterm", "-T", "Sandboxed"});
    ASSERT_TRUE(testbed::waitUntil([&] {
        const auto windows = desktop.windows(outside.pid());
        return !windows.empty() && desktop.activeWindow() == windows.front();
    }));
    const auto element =
        get<AXUIElementRef>(AXUIElementCreateApplication(outside.pid()), "AXFocusedUIElement");
    ASSERT_TRUE(element);
    EXPECT_EQ(text(*element), "inside");
}

} // namespace
} // namespace platform
