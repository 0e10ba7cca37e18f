#include "linux/run_until.h"
#include "platform/linux/interface/process.h"
#include "platform/linux/interface/program.h"
#include "testing/desktop/temporary_folder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace platform {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

// A shell script as the interface.
struct InterfaceProcessTest : testing::Test {
    void run(const std::string& script) {
        std::string whyNot;
        process = InterfaceProcess::start(
            {"/bin/sh", "-c", script}, {"GREETING=hello"}, [this] { ended = true; }, whyNot);
        ASSERT_TRUE(process) << whyNot;
    }

    bool ended = false;
    std::unique_ptr<InterfaceProcess> process;
};

TEST_F(InterfaceProcessTest, ExitStatusIsReportedAsAShellReportsIt) {
    const struct {
        const char* script;
        int status;
        const char* ending;
    } cases[] = {
        {"exit 0", 0, "ended with status 0"},
        {"[ \"$GREETING\" = hello ] && exit 7", 7, "ended with status 7"},
        {"kill -9 $$", 137, "was ended by signal 9"},
        {"kill -PIPE $$; sleep 1", 141,
         "was ended by signal 13"}, // the host ignores SIGPIPE, the interface must not
    };
    for (const auto& [script, status, ending] : cases) {
        ended = false;
        run(script);
        runUntil([this] { return ended; });
        EXPECT_EQ(process->exitStatus(), status) << script;
        EXPECT_THAT(process->ending(), HasSubstr(ending));
    }
}

TEST_F(InterfaceProcessTest, EndWaitsThenSendsSigtermThenSigkill) {
    run("sleep 0.05; exit 3");
    EXPECT_TRUE(process->end(10s));
    EXPECT_EQ(process->exitStatus(), 3);

    run("trap 'exit 4' TERM; while :; do sleep 0.01; done");
    EXPECT_FALSE(process->end(300ms));
    EXPECT_EQ(process->exitStatus(), 4);

    run("trap '' TERM; while :; do sleep 0.01; done");
    EXPECT_FALSE(process->end(300ms));
    EXPECT_EQ(process->exitStatus(), 128 + SIGKILL);
    EXPECT_FALSE(ended) << "the callback is for a process that ends by itself";
}

TEST_F(InterfaceProcessTest, GetsAProcessGroupOfItsOwnThatEndsWithIt) {
    const testbed::TemporaryFolder folder;
    const std::string child = folder / "child";
    run("sleep 1000 & echo $! >" + child + "; cut -d' ' -f5 /proc/$$/stat >" + child + ".group; wait");
    runUntil([&] { return !testbed::readFile(child + ".group").empty(); });
    EXPECT_NE(std::stoi(testbed::readFile(child + ".group")), getpgrp()) << "Control+C would end it";
    EXPECT_FALSE(process->end(0ms));
    const pid_t sleeper = std::stoi(testbed::readFile(child));
    runUntil([&] {
        return kill(sleeper, 0) != 0 ||
               testbed::readFile("/proc/" + std::to_string(sleeper) + "/stat").find(") Z ") !=
                   std::string::npos;
    });
}

TEST_F(InterfaceProcessTest, ProgramThatCannotBeStartedGivesAReason) {
    std::string whyNot;
    EXPECT_FALSE(InterfaceProcess::start(
        {"/nonexistent/program"}, {}, [] {}, whyNot));
    EXPECT_THAT(whyNot, HasSubstr("No such file"));
}

TEST(FindInterface, SaysWhatToDoWhenAProgramCannotBeStarted) {
    const testbed::TemporaryFolder folder;
    std::ofstream(folder / "plain") << "#!/bin/sh\n";
    const auto problem = [](const std::string& program) {
        std::string sentence;
        EXPECT_TRUE(findInterface({program}, sentence).empty()) << program;
        return sentence;
    };
    EXPECT_THAT(problem((folder / "missing").string()), HasSubstr("there is no program"));
    EXPECT_THAT(problem("no-such-program-anywhere"), HasSubstr("there is no program"));
    EXPECT_THAT(problem(""), HasSubstr("there is no program"));
    EXPECT_THAT(problem((folder / "plain").string()), HasSubstr("chmod +x"));
    EXPECT_THAT(problem((folder / "").string()), HasSubstr("is a folder"));

    fs::permissions(folder / "plain", fs::perms::owner_all);
    std::string none;
    EXPECT_THAT(findInterface({(folder / "plain").string(), "-x"}, none),
                ElementsAre((folder / "plain").string(), "-x"));
    EXPECT_THAT(findInterface({"sh"}, none), ElementsAre(HasSubstr("/sh")));
    EXPECT_EQ(none, "");
}

} // namespace
} // namespace platform
