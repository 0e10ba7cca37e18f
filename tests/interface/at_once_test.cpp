// Rewritten and put in without the window: nothing takes the keyboard by surprise, and nothing is lost.
#include "interface/writer.h"

namespace testbed {
namespace {

using testing::HasSubstr;

struct AtOnce : Writer {
    // With the window out of the way and the keyboard in a program.
    void SetUp() override {
        start(atOnce);
        ASSERT_TRUE(desktop.activate(window()));
        press("Escape");
        ASSERT_TRUE(comes([&] { return isHidden(); })) << host->output();
    }
    // The host shows its window after a refused paste: for as long as the interface takes to hide it again.
    void expectNoWindow() {
        EXPECT_TRUE(comes([&] { return isHidden(); }));
        EXPECT_TRUE(comes([&] { return !isInFront(); }));
    }
};

TEST_F(AtOnce, PutsTheRewriteInWithoutTheWindow) {
    model.answers("I know it");
    write("i knwo it");
    pressHotKey();
    fields->awaitText("I know it");
    expectNoWindow();
    EXPECT_FALSE(notices.next(milliseconds(100)));
}

TEST_F(AtOnce, PutsNothingInWhenThePersonGoesOnTyping) {
    model.answers("I know it", Manner::half);
    write("i knwo it");
    pressHotKey();
    ASSERT_TRUE(comes([&] { return model.requests() == 1; }));
    press("End");
    type(" and go on");
    model.finish();
    const auto notice = notices.next();
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->body, "You went on working in the meantime.");
    fields->awaitText("i knwo it and go on");
    expectNoWindow();
    notices.press("Copy");
    EXPECT_TRUE(comes([&] { return desktop.text("CLIPBOARD") == "I know it"; }));
    expectNoWindow();
}

TEST_F(AtOnce, SaysWithANoticeWhatWasNotPutIn) {
    const struct {
        Manner manner;
        const char *change, *title, *body;
    } table[]{
        {Manner::half, "text 0 other", "The rewrite was not put in", "clipboard"},
        {Manner::fails, nullptr, "The text was not rewritten", ""},
    };
    int requests = 0;
    for (const auto& [manner, change, title, body] : table) {
        model.answers("I know it", manner);
        write("i knwo it");
        pressHotKey();
        ASSERT_TRUE(comes([&] { return model.requests() > requests; }));
        requests = model.requests();
        if (change) fields->command(change);
        model.finish();
        const auto notice = notices.next();
        ASSERT_TRUE(notice) << title;
        EXPECT_EQ(notice->title, title);
        EXPECT_THAT(notice->body, HasSubstr(body));
        EXPECT_THAT(notice->body, testing::Not(HasSubstr("know"))) << "desktops keep notices";
        expectNoWindow();
    }
    notices.press("Show");
    EXPECT_TRUE(comes([&] { return isInFront(); }));
    EXPECT_TRUE(originalIs("i knwo it"));
}

} // namespace
} // namespace testbed
