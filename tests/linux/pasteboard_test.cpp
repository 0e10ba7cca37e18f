// The pasteboard among other programs, well-behaved and not, with the host's own snapshot of it.
#include "capture/ax.h"
#include "platform/linux/x11/pasteboard/primary.h"
#include "platform/pasteboard.h"
#include "testing/desktop/misbehaving_owner.h"
#include "testing/desktop/pasteboard_programs.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <signal.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace platform {
namespace {

using namespace std::chrono_literals;
using namespace pasteboard_test;
using testbed::waitUntil;
using testing::Optional;

Pasteboard& pasteboard() { return Pasteboard::generalPasteboard(); }

std::string patternOf(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t at = 0; at < size; ++at)
        bytes[at] = static_cast<char>(at * 7 + at / 251);
    return bytes;
}

Representation text(const std::string& bytes) { return {"UTF8_STRING", "UTF8_STRING", 8, bytes}; }

AX::PasteboardSnapshot snapshot() { return AX::snapshotPasteboard(pasteboard()); }

void restore(AX::PasteboardSnapshot snapshot) { AX::restorePasteboard(pasteboard(), std::move(snapshot)); }

std::chrono::milliseconds took(const std::function<void()>& act) {
    const auto start = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

std::optional<std::string> hostText() { return pasteboard().stringForType(PasteboardTypeString); }

struct PasteboardTest : testing::Test {
    PasteboardTest() { pasteboard().clearContents(); }
};

TEST_F(PasteboardTest, EveryRepresentationComesBackExactly) {
    const std::vector<Representation> copied = {
        {"application/x-units", "INTEGER", 32, patternOf(400)},
        {"image/bmp", "image/bmp", 8, patternOf(7'000'000)},
        text("Grüße\n"),
        {"text/html", "text/html", 8, "<b>Grüße</b>"},
        {"application/x-nothing", "application/x-nothing", 8, ""},
        {"application/x-shorts", "CARDINAL", 16, patternOf(300'002)},
        {"application/x-odd", "STRING", 8, patternOf(262'145)},
    };
    const auto kept = [&] {
        const Owner owner(copied);
        return snapshot();
    }();
    ASSERT_EQ(kept.size(), 1U);
    ASSERT_EQ(kept[0].size(), copied.size());
    restore(kept);
    std::string names;
    for (std::size_t index = 0; index < copied.size(); ++index) {
        EXPECT_EQ(kept[0][index].first, copied[index].target) << "the owner's order";
        EXPECT_TRUE(given(copied[index].target) == copied[index]) << copied[index].target;
        names += copied[index].target + '\n';
    }
    EXPECT_EQ(given("TARGETS")->bytes, "TARGETS\nMULTIPLE\nTIMESTAMP\n" + names)
        << "a target of our own would show that the contents were replaced";
    EXPECT_TRUE(snapshot() == kept) << "read back from the host itself";
}

TEST_F(PasteboardTest, ServesSeveralProgramsWhileTheMainThreadSleeps) {
    const std::string large = patternOf(3'000'000);
    PasteboardItem item;
    item.setData({{large.begin(), large.end()}, "image/bmp/8"}, "image/bmp");
    ASSERT_TRUE(pasteboard().writeObjects({&item, 1}));
    Reader first("image/bmp"), second("image/bmp"), third("image/bmp");
    for (Reader* program : {&third, &second, &first})
        EXPECT_TRUE(program->finish() == "image/bmp 8\n" + large);
}

TEST_F(PasteboardTest, TextOfOtherProgramsIsReadInEveryEncoding) {
    const struct {
        Representation copied;
        std::optional<std::string> read;
    } cases[] = {
        {text(" two\nlines \n"), " two\nlines \n"},
        {text(""), ""},
        {{"text/plain;charset=utf-8", "text/plain;charset=utf-8", 8, "Żółw"}, "Żółw"},
        {{"STRING", "STRING", 8, "na\xEFve"}, "naïve"},
        {{"UTF8_STRING", "STRING", 8, "na\xEFve"}, "naïve"},
        {text(std::string("counted\0", 8)), "counted"},
        {text("bro\xFFken"), "bro\xEF\xBF\xBDken"},
        {text(std::string(1'500'000, 'x')), std::string(1'500'000, 'x')},
        {{"image/png", "image/png", 8, "no text"}, std::nullopt},
    };
    for (const auto& [copied, read] : cases) {
        const Owner owner({copied});
        EXPECT_TRUE(hostText() == read) << copied.target << ' ' << copied.bytes.substr(0, 20);
    }
}

TEST_F(PasteboardTest, StringIsOfferedUnderEveryNameOfText) {
    pasteboard().clearContents();
    ASSERT_TRUE(pasteboard().setString("Ünïcode – €", PasteboardTypeString));
    EXPECT_THAT(given("UTF8_STRING"), Optional(text("Ünïcode – €")));
    EXPECT_THAT(given("TEXT"), Optional(Representation{"TEXT", "UTF8_STRING", 8, "Ünïcode – €"}));
    const std::string latin1 = "\334n\357code ? ?";
    EXPECT_THAT(given("STRING"), Optional(Representation{"STRING", "STRING", 8, latin1}));
    EXPECT_EQ(given("text/plain")->bytes, "Ünïcode – €");
    EXPECT_EQ(hostText(), "Ünïcode – €");
    pasteboard().clearContents();
    ASSERT_TRUE(pasteboard().setString("", PasteboardTypeString));
    EXPECT_THAT(given("UTF8_STRING"), Optional(text("")));
    EXPECT_EQ(hostText(), "");
}

TEST_F(PasteboardTest, EveryChangeIsCounted) {
    RawClient other;
    const auto counted = [](const std::function<void()>& act) {
        const auto before = pasteboard().changeCount();
        act();
        return pasteboard().changeCount() - before;
    };
    EXPECT_EQ(counted([] {}), 0);
    EXPECT_EQ(counted([] { pasteboard().clearContents(); }), 1);
    EXPECT_EQ(counted([] { pasteboard().setString("x", PasteboardTypeString); }), 1);
    EXPECT_EQ(counted([] { restore({{{"text/plain", {{1}, {}}}}}); }), 2);
    EXPECT_EQ(counted([&] { other.own("CLIPBOARD"); }), 1);
    EXPECT_EQ(counted([&] {
                  for (int i = 0; i < 500; ++i)
                      other.own("CLIPBOARD");
              }),
              500);
    EXPECT_EQ(counted([&] { RawClient().own("CLIPBOARD"); }), 2) << "a new owner and its end";
    EXPECT_EQ(counted([&] { other.own("PRIMARY"); }), 0);
}

TEST_F(PasteboardTest, AClearedPasteboardIsEmptyButOwned) {
    const Owner owner({text("old")});
    pasteboard().clearContents();
    RawClient other;
    EXPECT_NE(other.owner(), XCB_NONE) << "without an owner clipboard managers put the old text back";
    EXPECT_EQ(given("UTF8_STRING"), std::nullopt);
    EXPECT_EQ(given("x-kde-passwordManagerHint")->bytes, "secret");
    EXPECT_THAT(pasteboard().pasteboardItems(), Optional(testing::IsEmpty()));
    EXPECT_EQ(hostText(), std::nullopt);
}

TEST_F(PasteboardTest, AnAnswerIsAboutTheOwnerOfWhichTheProgramHasHeardLast) {
    constexpr int rounds = 300;
    ASSERT_TRUE(pasteboard().setString("text", PasteboardTypeString));
    RawClient other;
    auto* xcb = other.xcb();
    free(xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 5, 0), nullptr));
    const std::uint8_t ownerChange = xcb_get_extension_data(xcb, &xcb_xfixes_id)->first_event;
    xcb_xfixes_select_selection_input(xcb, other.window(), other.atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    const xcb_atom_t target = other.atom("UTF8_STRING");
    int owners = 0, wrong = 0;
    std::jthread program([&] {
        while (owners < 2 * rounds) {
            bool answered = false;
            const auto hear = [&](const xcb_generic_event_t& event) {
                if ((event.response_type & 0x7F) == ownerChange) ++owners;
                if ((event.response_type & 0x7F) != XCB_SELECTION_NOTIFY) return;
                answered = true;
                const bool hasText =
                    reinterpret_cast<const xcb_selection_notify_event_t&>(event).property != XCB_NONE;
                wrong += hasText != (owners % 2 == 0); // every other owner is an empty one
            };
            xcb_convert_selection(xcb, other.window(), other.atom("CLIPBOARD"), target, target,
                                  XCB_CURRENT_TIME);
            xcb_flush(xcb);
            while (!answered) {
                const std::unique_ptr<xcb_generic_event_t, decltype(&free)> event(xcb_wait_for_event(xcb),
                                                                                  free);
                hear(*event);
            }
        }
    });
    for (int round = 0; round < rounds; ++round) {
        pasteboard().clearContents();
        pasteboard().setString("text", PasteboardTypeString);
    }
    program.join();
    EXPECT_EQ(wrong, 0);
}

TEST_F(PasteboardTest, StoppedOwnerIsWaitedForOnce) {
    const Owner owner({text("kept")});
    owner.program.signal(SIGSTOP);
    EXPECT_LT(took([] { EXPECT_FALSE(pasteboard().pasteboardItems()); }), 1500ms);
    EXPECT_LT(took([] {
                  for (int poll = 0; poll < 20; ++poll)
                      EXPECT_EQ(hostText(), std::nullopt);
              }),
              200ms);
    owner.program.signal(SIGCONT);
    EXPECT_TRUE(waitUntil([] { return hostText() == "kept"; })) << "it has answered again";
}

TEST_F(PasteboardTest, ContentsOfAStoppedOwnerStayWhenNothingIsCopied) {
    const Owner owner({text("kept"), {"application/x-rare", "application/x-rare", 8, "rare"}});
    owner.program.signal(SIGSTOP);
    const auto nothing = snapshot();
    EXPECT_TRUE(nothing.empty());
    const auto before = pasteboard().changeCount();
    pasteboard().clearContents();
    EXPECT_NE(pasteboard().changeCount(), before);
    owner.program.signal(SIGCONT);
    ASSERT_TRUE(waitUntil([] { return given("UTF8_STRING").has_value(); }));
    EXPECT_EQ(hostText(), std::nullopt) << "its late answer must not be taken for a copied text";
    restore(nothing);
    EXPECT_THAT(given("application/x-rare")->bytes, "rare");
    EXPECT_TRUE(waitUntil([] { return hostText() == "kept"; })) << "the clearing ends after 1.5 s";
}

TEST_F(PasteboardTest, ContentsOfAStoppedOwnerComeBackAfterACopyInAnotherProgram) {
    for (const bool both : {false, true}) {
        const Owner owner({text("kept"), {"text/html", "text/html", 8, "<i>kept</i>"}});
        owner.program.signal(SIGSTOP);
        const auto nothing = snapshot();
        pasteboard().clearContents();
        const Owner target({text("selected")});
        if (both) target.program.signal(SIGSTOP);
        EXPECT_EQ(hostText(), both ? std::nullopt : std::optional<std::string>("selected"));
        restore(nothing);
        EXPECT_EQ(given("UTF8_STRING"), std::nullopt);
        const auto before = pasteboard().changeCount();
        owner.program.signal(SIGCONT);
        target.program.signal(SIGCONT);
        EXPECT_TRUE(waitUntil([] { return hostText() == "kept"; }));
        EXPECT_EQ(given("text/html")->bytes, "<i>kept</i>");
        EXPECT_EQ(pasteboard().changeCount(), before + 1);
    }
}

TEST_F(PasteboardTest, LateContentsNeverReplaceWhatTheUserCopies) {
    const Owner stopped({text("old")});
    stopped.program.signal(SIGSTOP);
    const auto nothing = snapshot();
    pasteboard().clearContents();
    {
        const Owner target({text("selected")});
        restore(nothing);
    }
    const Owner newest({text("newest")});
    stopped.program.signal(SIGCONT);
    std::this_thread::sleep_for(2s); // No condition to wait for: nothing may happen.
    EXPECT_EQ(hostText(), "newest");
}

TEST_F(PasteboardTest, SlowlyDeliveredCopyIsRead) {
    const struct {
        std::chrono::milliseconds delay;
        bool inTime;
    } cases[] = {{450ms, true}, {2300ms, false}};
    for (const auto& [delay, inTime] : cases) {
        const MisbehavingOwner owner({text("slow")}, {.delay = delay});
        std::optional<std::string> read;
        EXPECT_LT(took([&] { read = hostText(); }), 2800ms);
        EXPECT_EQ(read == "slow", inTime) << delay.count();
        EXPECT_EQ(hostText().has_value(), inTime) << "an owner that is late is not waited for again";
        if (inTime) continue;
        EXPECT_TRUE(waitUntil([] { return hostText() == "slow"; })) << "its late answer counts";
    }
}

TEST_F(PasteboardTest, TargetThatIsNotDeliveredDelaysNoOther) {
    const std::vector<Representation> copied = {text("kept"),
                                                {"text/html", "text/html", 8, "<b>kept</b>"},
                                                {"image/png", "image/png", 8, "png"},
                                                {"application/x-own", "application/x-own", 8, "own"},
                                                {"image/bmp", "image/bmp", 8, "bmp"}};
    const struct {
        Faults faults;
        std::vector<std::string> kept;
    } cases[] = {
        {{.refused = {"image/png"}}, {"UTF8_STRING", "text/html", "application/x-own", "image/bmp"}},
        {{.ignored = {"UTF8_STRING"}}, {"text/html", "image/png", "application/x-own", "image/bmp"}},
        {{.ignored = {"text/html", "image/png"}}, {"UTF8_STRING", "application/x-own", "image/bmp"}},
        {{.endless = {"image/bmp"}}, {"UTF8_STRING", "text/html", "image/png", "application/x-own"}},
        {{.delay = 450ms}, {"UTF8_STRING", "text/html", "image/png", "application/x-own", "image/bmp"}},
        // It does not say what it offers, so only what is common is asked for.
        {{.refused = {"TARGETS"}}, {"UTF8_STRING", "text/html", "image/png"}},
    };
    for (const auto& [faults, kept] : cases) {
        const MisbehavingOwner owner(copied, faults);
        AX::PasteboardSnapshot taken;
        EXPECT_LT(took([&] { taken = snapshot(); }), 4500ms);
        restore(taken);
        for (const Representation& one : copied) {
            const bool expected = std::ranges::find(kept, one.target) != kept.end();
            EXPECT_EQ(given(one.target).has_value(), expected) << one.target;
        }
        pasteboard().clearContents();
    }
}

TEST_F(PasteboardTest, AnswerWithoutEndIsGivenUp) {
    const MisbehavingOwner owner({text("e")}, {.endless = {"UTF8_STRING"}});
    EXPECT_EQ(hostText(), std::nullopt);
    const std::size_t taken = owner.taken();
    EXPECT_LT(taken, 80'000'000U);
    EXPECT_EQ(hostText(), std::nullopt);
    std::this_thread::sleep_for(100ms); // No condition to wait for: nothing may happen.
    EXPECT_EQ(owner.taken(), taken);
}

TEST_F(PasteboardTest, SelectedTextIsCopiedForAProgramThatOwnsIt) {
    const MisbehavingOwner program({text("selected")}, {}, "PRIMARY");
    const RawClient other;
    selection::copyPrimarySelection(other.window());
    EXPECT_EQ(hostText(), std::nullopt) << "the selection is another program's";
    selection::copyPrimarySelection(program.window());
    EXPECT_EQ(hostText(), "selected");
    const MisbehavingOwner silent({text("selected")}, {.ignored = {"UTF8_STRING"}}, "PRIMARY");
    pasteboard().clearContents();
    EXPECT_LT(took([&] { selection::copyPrimarySelection(silent.window()); }), 2500ms);
    EXPECT_EQ(hostText(), std::nullopt);
}

TEST_F(PasteboardTest, OwnerThatEndsDuringADeliveryIsIgnored) {
    RawClient owner;
    owner.own("CLIPBOARD");
    std::jthread program([dying = std::make_unique<RawClient>()]() mutable {
        dying->own("CLIPBOARD");
        const auto request = dying->nextRequest();
        dying->set(request.requestor, request.property, "INCR", 32, std::string(4, '\0'));
        dying->notify(request, true);
        dying->waitDeleted(request.property);
        dying->set(request.requestor, request.property, "UTF8_STRING", 8, "half");
        dying->waitDeleted(request.property);
        dying.reset();
    });
    ASSERT_TRUE(waitUntil([&] { return owner.owner() != owner.window(); }));
    EXPECT_EQ(hostText(), std::nullopt);
    const Owner next({text("alive")});
    EXPECT_EQ(hostText(), "alive");
}

TEST_F(PasteboardTest, RequestorThatEndsDuringADeliveryDisturbsNoOther) {
    constexpr std::size_t size = 2'000'000;
    ASSERT_TRUE(pasteboard().setString(std::string(size, 'y'), PasteboardTypeString));
    for (int death = 0; death < 3; ++death) {
        RawClient reader;
        const xcb_atom_t property = reader.convert("CLIPBOARD", "UTF8_STRING");
        EXPECT_EQ(reader.bytes(property).size(), 4U) << "the announcement of pieces";
    }
    EXPECT_EQ(given("UTF8_STRING")->bytes.size(), size);
    EXPECT_EQ(hostText()->size(), size);
}

// The manager asks for several targets in one request (MULTIPLE).
TEST_F(PasteboardTest, ClipboardManagerGetsTheContentsWhenTheProgramEnds) {
    if (std::getenv("LAST_WORDS")) { // this test in a second process, the program that ends
        ASSERT_TRUE(pasteboard().setString("last words", PasteboardTypeString));
        return;
    }
    auto manager = std::make_unique<RawClient>();
    manager->own("CLIPBOARD_MANAGER");
    std::string saved, answers;
    std::jthread keeper([&] {
        const auto request = manager->nextRequest();
        std::string pairs;
        for (const char* name : {"UTF8_STRING", "FIRST", "image/none", "SECOND", "TIMESTAMP", "THIRD"}) {
            const xcb_atom_t atom = manager->atom(name);
            pairs.append(reinterpret_cast<const char*>(&atom), sizeof atom);
        }
        manager->set(manager->window(), manager->atom("ANSWER"), "ATOM_PAIR", 32, pairs);
        manager->convert("CLIPBOARD", "MULTIPLE");
        saved = manager->bytes(manager->atom("FIRST"));
        answers = manager->bytes(manager->atom("ANSWER"));
        manager->notify(request, true);
    });
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(std::system(("LAST_WORDS=1 " + self + " --gtest_filter=*ClipboardManager* >&2").c_str()), 0);
    keeper.join();
    EXPECT_EQ(saved, "last words");
    EXPECT_EQ(answers.substr(12, 4), std::string(4, '\0')) << "None marks the target that failed";
    EXPECT_NE(answers.substr(4, 4), std::string(4, '\0'));
}

TEST_F(PasteboardTest, ToolkitOfTheSameProcessReadsAndReplacesTheContents) {
    ASSERT_TRUE(gtk_init_check(nullptr, nullptr));
    GtkClipboard* toolkit = gtk_clipboard_get(GDK_SELECTION_CLIPBOARD);
    for (const std::string round : {"once", "twice"}) {
        pasteboard().clearContents();
        ASSERT_TRUE(pasteboard().setString(round, PasteboardTypeString));
        const std::unique_ptr<char, void (*)(gpointer)> read(gtk_clipboard_wait_for_text(toolkit), g_free);
        ASSERT_TRUE(read);
        EXPECT_EQ(read.get(), round);
        gtk_clipboard_set_text(toolkit, "of the toolkit", -1);
        gdk_display_sync(gdk_display_get_default());
    }
    // The owner is this very thread, which cannot answer while it waits.
    EXPECT_LT(took([] { EXPECT_EQ(hostText(), std::nullopt); }), 2500ms);
}

} // namespace
} // namespace platform
