// The host and the manager of its desktop session.
#include "testing/desktop/host.h"
#include "testing/desktop/session_manager.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <memory>

using namespace testbed;

namespace {

using flutter::CallOutcome;
using flutter::EncodableValue;
using testing::ElementsAre;

const CallOutcome null = EncodableValue();

TEST(HostSession, TheEndOfTheSessionIsPutToTheInterfaceFirst) {
    SessionManager session;
    Host host(session.environment());
    host.call("initialize");
    ASSERT_EQ(session.next(), "joined") << host.process().output();
    EXPECT_EQ(session.next(), "agrees") << "to be saved, without asking anybody";

    session.askToEnd(false);
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("cancelQuit"), null);
    EXPECT_EQ(session.next(), "does not agree");

    session.askToEnd();
    EXPECT_EQ(session.next(), "asks to interact");
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("cancelQuit"), null);
    EXPECT_EQ(session.next(), "refuses");
    EXPECT_EQ(session.next(), "does not agree");
    EXPECT_EQ(host.call("pin", false), null) << "it ended although the interface refused";

    session.askToEnd();
    EXPECT_EQ(session.next(), "asks to interact");
    ASSERT_TRUE(host.nextCall("quit"));
    EXPECT_EQ(host.call("quit"), null);
    host.exitInterface(0);
    EXPECT_EQ(session.next(), "has interacted");
    EXPECT_EQ(session.next(), "agrees");
    EXPECT_FALSE(host.process().exitStatus(milliseconds(200))) << "the manager forgets who leaves early";
    session.end();
    EXPECT_EQ(session.next(), "leaves");
    EXPECT_EQ(host.process().exitStatus(), 0);
    EXPECT_EQ(host.process().output(), "");
}

// The question is withdrawn: the next quit asks the interface anew, and nothing ends the host meanwhile.
TEST(HostSession, AnEndCalledOffByOthersIsAnsweredOnceAndNeedsNoAnswerOfTheInterface) {
    auto session = std::make_unique<SessionManager>();
    Host host(session->environment());
    host.call("initialize");
    for (const char* expected : {"joined", "agrees"})
        ASSERT_EQ(session->next(), expected);
    session->askToEnd();
    EXPECT_EQ(session->next(), "asks to interact");
    ASSERT_TRUE(host.nextCall("quit"));
    session->callOff();
    EXPECT_EQ(session->next(), "has interacted");
    EXPECT_EQ(session->next(), "does not agree");
    host.process().signal(SIGTERM);
    ASSERT_TRUE(host.nextCall("quit")) << "the former question still stood";
    EXPECT_EQ(host.call("cancelQuit"), null);

    session.reset();
    EXPECT_EQ(host.call("pin", false), null) << "it misses its manager";
    host.exitInterface(0);
    EXPECT_EQ(host.process().exitStatus(), 0);
}

TEST(HostSession, TheManagerCanStartItAgainAfterACrashAndAtTheNextLoginButNotAfterAQuit) {
    SessionManager session;
    Host host(session.environment(), {{"--dialogs"}});
    ASSERT_EQ(session.next(), "joined");
    const auto is = [&](const char* name, const auto& expected) {
        return waitUntil([&] { return testing::Matches(expected)(session.property(name)); });
    };
    constexpr char restartImmediately = 2, restartIfRunning = 0;
    EXPECT_TRUE(is("RestartStyleHint", ElementsAre(std::string(1, restartImmediately))));
    const auto restart = session.property("RestartCommand");
    ASSERT_GT(restart.size(), 6U);
    EXPECT_EQ(restart[0], std::filesystem::canonical(hostProgram()));
    EXPECT_EQ(restart[1], "--sm-client-id");
    const std::vector<std::string> rest(restart.begin() + 3, restart.begin() + 7);
    EXPECT_THAT(rest, ElementsAre("--background", "--dialogs", "--", "/bin/sh"));
    host.exitInterface(0);
    EXPECT_TRUE(is("RestartStyleHint", ElementsAre(std::string(1, restartIfRunning))));
}

} // namespace
