// Quitting: the interface is asked first, and has fifteen seconds to answer.
#include "support/host.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Quit : testing::Test, Host {
    void initialise() { call("initialize"); }
    void userQuits() {
        world.userQuits();
        world.settle();
    }
    void pressCloseButton() {
        window->native().userPressesCloseButton();
        world.settle();
    }
};

} // namespace

TEST_F(Quit, IsGrantedAtOnceBeforeTheInterfaceIsReady) {
    userQuits();
    EXPECT_TRUE(world.hostEnded);
    EXPECT_THAT(calledMethods(), IsEmpty());
    EXPECT_THAT(world.terminateReplies, ElementsAre(platform::ApplicationTerminateReply::terminateNow));
}

TEST_F(Quit, IsGrantedAtOnceWithoutAWindow) {
    initialise();
    delegate->mainFlutterWindow.reset();
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(false));
    EXPECT_FALSE(delegate->applicationShouldHandleCapture());
    userQuits();
    EXPECT_TRUE(world.hostEnded);
    EXPECT_THAT(calledMethods(), IsEmpty());
}

TEST_F(Quit, ByTheCloseButtonBeforeTheInterfaceIsReadyEndsTheHost) {
    pressCloseButton();
    EXPECT_TRUE(world.hostEnded);
    EXPECT_THAT(calledMethods(), IsEmpty());
}

TEST_F(Quit, AsksTheInterfaceOnceAndWaitsForItsConsent) {
    initialise();
    userQuits();
    userQuits();
    EXPECT_THAT(calledMethods(), ElementsAre("quit"));
    EXPECT_FALSE(world.hostEnded);
    const auto answer = call("quit");
    EXPECT_EQ(answer.text(), "null") << "answered before the host ends";
    EXPECT_TRUE(world.hostEnded);
    delegate->finishQuit();
    EXPECT_THAT(world.settledTerminations, ElementsAre(true)) << "a second time there is nothing to settle";
}

TEST_F(Quit, IsCompletedWhenTheInterfaceStaysSilent) {
    initialise();
    userQuits();
    world.runFor(14'999ms);
    EXPECT_FALSE(world.hostEnded);
    world.runFor(1ms);
    EXPECT_TRUE(world.hostEnded);
}

TEST_F(Quit, IsWithdrawnByTheInterfaceAndMayBeAskedAgain) {
    initialise();
    userQuits();
    world.runFor(10s);
    EXPECT_EQ(call("cancelQuit").text(), "null");
    EXPECT_THAT(world.settledTerminations, ElementsAre(false));
    world.runFor(10s);
    EXPECT_FALSE(world.hostEnded) << "nothing is pending when the time is up";

    userQuits();
    world.runFor(10s);
    call("cancelQuit");
    userQuits();
    EXPECT_THAT(calledMethods(), ElementsAre("quit", "quit", "quit"));
    world.runFor(5s);
    EXPECT_TRUE(world.hostEnded) << "an earlier request's timeout grants whatever request is pending";
}

TEST_F(Quit, ThatIsNotAskedForAnyMoreNeedsNoAnswerAndMayBeAskedAgain) {
    initialise();
    userQuits();
    world.terminationIsWithdrawn();
    world.runFor(20s);
    EXPECT_FALSE(world.hostEnded);
    EXPECT_EQ(call("cancelQuit").text(), "null");
    EXPECT_THAT(world.settledTerminations, IsEmpty());
    userQuits();
    EXPECT_THAT(calledMethods(), ElementsAre("quit", "quit"));
}

TEST_F(Quit, OfferedByTheInterfaceNeedsNoRequest) {
    initialise();
    EXPECT_EQ(call("cancelQuit").text(), "null");
    EXPECT_THAT(world.settledTerminations, IsEmpty());
    call("quit");
    EXPECT_TRUE(world.hostEnded);
}

TEST_F(Quit, ByTheCloseButtonOnlyAsksAndNeverTimesOut) {
    initialise();
    pressCloseButton();
    EXPECT_THAT(calledMethods(), ElementsAre("quit"));
    world.runFor(60s);
    EXPECT_FALSE(world.hostEnded || windowState().closed);
    call("quit");
    EXPECT_TRUE(world.hostEnded);
}

TEST_F(Quit, StillAnswersTheInterfaceUnderAnotherDelegate) {
    initialise();
    platform::Application::sharedApplication().setDelegate(nullptr);
    EXPECT_EQ(call("cancelQuit").text(), "null");
    EXPECT_EQ(call("quit").text(), "null");
    EXPECT_FALSE(world.hostEnded);
}

TEST_F(Quit, ByTheCloseButtonNeedsNoDelegate) {
    platform::Application::sharedApplication().setDelegate(nullptr);
    pressCloseButton();
    EXPECT_TRUE(world.hostEnded);
}

TEST_F(Quit, StartedAgainShowsTheWindowInstead) {
    call("hide");
    world.userReopensHost();
    world.settle();
    EXPECT_TRUE(windowState().key && !windowState().miniaturized && world.hostInFront());
}
