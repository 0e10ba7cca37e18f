// Which model answers, how soon that is known, and whose it may be.
#include "model/server_host.h"
#include "platform/listening_sockets.h"
#include "platform/models/generation/background_executor.h"
#include "platform/models/language_model_report.h"
#include "platform/models/model_finder.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <list>
#include <memory>
#include <optional>
#include <thread>

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

const std::string available = "state=available os_build=";

struct ChosenServer : ServerHost {
    // Told as far as it is known within 300 ms, in which a busy machine may not get through a handshake.
    std::string availabilityInTheEnd() {
        std::string said;
        for (const auto end = Clock::now() + 10s; Clock::now() < end; std::this_thread::sleep_for(10ms))
            if (said = call("availability"); said.find("at the moment") == said.npos) break;
        return said;
    }
    // What is said of it, by a generation, which can wait for it longer, and by the report alike.
    void expectUnavailable(const char* reason, const char* words) {
        respond("a");
        EXPECT_THAT(allEvents(), ElementsAre(AllOf(StartsWith("a error error="), HasSubstr(words))));
        EXPECT_THAT(availabilityInTheEnd(),
                    AllOf(StartsWith(std::string("state=unavailable reason=") + reason), HasSubstr(words)));
    }
    void expectUnavailable(const ServerBehaviour& behaviour, const char* reason, const char* words) {
        const ScriptedServer other(behaviour);
        choose(other.url());
        expectUnavailable(reason, words);
    }
};

TEST_F(ChosenServer, IsReportedAsItIsAndNeverReplaced) {
    EXPECT_THAT(availabilityInTheEnd(), StartsWith(available));
    expectUnavailable({.health = 503}, "model_not_ready", ": Loading model. Wait");
    expectUnavailable({.health = 404, .models = R"({"data":null})"}, "model_not_ready", "has no model");
    expectUnavailable({.models = "<html>"}, "not_enabled", "does not speak the language");
    expectUnavailable({.probe = sends("HTTP/1.1 401 X\r\n\r\n")}, "not_enabled", "wants a key");
    choose(ScriptedServer().url());
    expectUnavailable("not_enabled", "cannot be reached (Connection refused)");
    choose(server.url(), "other");
    expectUnavailable("model_not_ready", "has no model \"other\"");
    choose("http://models.example.org/v1");
    expectUnavailable("not_enabled", "begins with https://");
    choose("no address");
    expectUnavailable("not_enabled", "OPENAI_BASE_URL is not");
    // Encrypted, and this server does not know how.
    choose("https" + server.url().substr(4));
    expectUnavailable("not_enabled", "could not prove");
}

TEST_F(ChosenServer, IsFoundThoughOtherAnswersKeepTheBackgroundThreadsBusy) {
    std::promise<void> found;
    const auto wait = found.get_future().share();
    for (int i = 0; i < 100; ++i)
        boost::asio::post(platform::backgroundPool(), [wait] { wait.wait(); });
    EXPECT_TRUE(std::holds_alternative<platform::ServedModel>(platform::findModel()));
    found.set_value();
}

// Small servers often answer one call at a time.
TEST_F(ChosenServer, IsAskedAndWaitedForWhileItSaysNothing) {
    const ScriptedServer busy({.chat = writes(done), .probe = saysNothing});
    choose(busy.url());
    EXPECT_THAT(call("availability"), AllOf(StartsWith("state=unavailable reason=model_not_ready"),
                                            HasSubstr("does not answer at the moment")));
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(firstText, "a done finish_reason=stop"));
}

TEST_F(ChosenServer, IsUsedByItsModelsNameThoughItIsSlow) {
    const auto asked = std::make_shared<std::promise<std::string>>();
    const ScriptedServer slow({.chat =
                                   [asked](ClientConnection& connection) {
                                       asked->set_value(connection.request);
                                       writes(done)(connection);
                                   },
                               .probe =
                                   [](ClientConnection& connection) {
                                       std::this_thread::sleep_for(400ms);
                                       connection.send(
                                           "HTTP/1.1 200 X\r\n\r\n{\"data\":[{\"id\":\"slow-one\"}]}");
                                   }});
    choose(slow.url());
    EXPECT_THAT(call("availability"), StartsWith("state=unavailable reason=model_not_ready"));
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(firstText, "a done finish_reason=stop"));
    EXPECT_THAT(asked->get_future().get(), HasSubstr(R"("model":"slow-one")"));
    EXPECT_THAT(call("availability"), StartsWith(available));
}

TEST_F(ChosenServer, IsNotSaidToBeThereOnceItHasDied) {
    server.become({.chat = [this](ClientConnection& connection) {
        server.become({.health = 503});
        connection.head(200);
        connection.text("a");
    }});
    EXPECT_THAT(call("availability"), StartsWith(available));
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(firstText, HasSubstr("ended before its answer was complete")));
    EXPECT_THAT(call("availability"), StartsWith("state=unavailable reason=model_not_ready"));
}

struct FoundServer : ServerHost {
    FoundServer() {
        choose("");
        if (std::holds_alternative<platform::ServedModel>(platform::findModel()))
            skipped = "a model server runs on this computer";
        lookForOneAt(server.port());
    }
    void SetUp() override {
        if (!skipped.empty()) GTEST_SKIP() << skipped;
    }
    void expectNone() {
        EXPECT_THAT(call("availability"), AllOf(StartsWith("state=unavailable reason=not_enabled detail="),
                                                HasSubstr("Start a local model server")));
        respond("a");
        EXPECT_THAT(allEvents(),
                    ElementsAre(AllOf(StartsWith("a error error="), HasSubstr("Start a local"))));
    }
    // A new look is taken once the last one is a second old.
    static void waitForANewLook() { std::this_thread::sleep_for(1050ms); }

    std::string skipped;
};

TEST_F(FoundServer, IsOneThatSaysAllThatModelServersSay) {
    EXPECT_THAT(call("availability"), StartsWith(available));
    std::list<ScriptedServer> strangers;
    for (const auto& behaviour :
         {ServerBehaviour{.models = R"({"data":[{"id":"42"}]})"}, ServerBehaviour{.models = R"({"data":[]})"},
          ServerBehaviour{.probe = sends("HTTP/1.1 503 X\r\n\r\n<html>")},
          ServerBehaviour{.probe = saysNothing}}) {
        lookForOneAt(strangers.emplace_back(behaviour).port());
        expectNone();
    }
    lookForOneAt(1); // nobody's
    expectNone();
}

TEST_F(FoundServer, IsUsedOnlyWithAModelThatRunsOnThisComputer) {
    const std::string elsewhere =
        R"({"id":"gpt-oss:120b-cloud","object":"model"},{"id":"remote","object":"model"})";
    const std::string tags =
        R"({"models":[{"name":"remote","remote_host":"https://example.org"},{"name":"here"}]})";
    const ScriptedServer cloud({.models = R"({"object":"list","data":[)" + elsewhere + "]}", .tags = tags});
    lookForOneAt(cloud.port());
    EXPECT_THAT(call("availability"), AllOf(StartsWith("state=unavailable reason=model_not_ready"),
                                            HasSubstr("runs on this computer")));
    const ScriptedServer both(
        {.models = R"({"object":"list","data":[)" + elsewhere + R"(,{"id":"here","object":"model"}]})",
         .tags = tags});
    lookForOneAt(both.port());
    const auto choice = platform::findModel();
    EXPECT_THAT(std::get<platform::ServedModel>(choice).models, ElementsAre("here"));
}

TEST_F(FoundServer, IsAskedForAModelThatOllamaSaysCanAnswer) {
    const ScriptedServer ollama(
        {.models = R"({"object":"list","data":[{"id":"a","object":"model"},{"id":"b","object":"model"}]})",
         .tags = R"({"models":[{"name":"a","capabilities":["embedding"]},{"name":"b"}]})",
         .show = R"({"capabilities":["completion","thinking"]})"});
    lookForOneAt(ollama.port());
    const auto served = std::get<platform::ServedModel>(platform::findModel());
    EXPECT_THAT(served.models, ElementsAre("b"));
    EXPECT_EQ(served.thinkingSwitch, platform::ThinkingSwitch::reasoningEffort);
}

TEST_F(FoundServer, BelongsToThisUserOrTheSystem) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can listen as somebody else";
    constexpr uid_t somebody = 12345;
    std::optional<ScriptedServer> other;
    ASSERT_EQ(seteuid(somebody), 0); // a socket belongs to who made it
    other.emplace();
    ASSERT_EQ(seteuid(0), 0);
    lookForOneAt(other->port());
    expectNone();
    choose(other->url());
    EXPECT_THAT(call("availability"), StartsWith(available));
}

TEST_F(FoundServer, IsReportedWithItsPlaceAndOwnerAndWhyOthersDoNotAnswer) {
    const auto report = platform::reportLanguageModel();
    EXPECT_TRUE(report.available && report.isOnThisComputer && !report.isChosen);
    EXPECT_EQ(report.model, "m");
    EXPECT_EQ(report.user, platform::accountName(geteuid()));
    EXPECT_THAT(inWords(report), AllOf(HasSubstr("The model m answers"), HasSubstr("Other servers:")));
    EXPECT_THAT(inJson(report), AllOf(StartsWith(R"({"state":"available")"), HasSubstr(R"("why_not":")")));
    choose("http://localhost:1");
    EXPECT_THAT(inWords(platform::reportLanguageModel()), HasSubstr("cannot be reached"));
}

TEST_F(FoundServer, StaysTheModelWhileItIsBusy) {
    server.become({.chat = writes(done)});
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(firstText, "a done finish_reason=stop"));
    server.become({.chat = writes(done), .probe = saysNothing});
    for (int i = 0; i < 2; ++i) {
        waitForANewLook();
        EXPECT_THAT(call("availability"), StartsWith(available));
        respond("a");
        EXPECT_THAT(allEvents(), ElementsAre(firstText, "a done finish_reason=stop"));
    }
    choose(server.url(), "other");
    EXPECT_THAT(call("availability"), HasSubstr("does not answer at the moment"))
        << "another of its models is not known to answer";
}

TEST_F(FoundServer, DoesNotHoldUpCallsWhileItIsSilent) {
    const ScriptedServer silent({.probe = saysNothing});
    lookForOneAt(silent.port());
    const auto start = Clock::now();
    for (int i = 0; i < 10; ++i)
        call("availability");
    EXPECT_LT(Clock::now() - start, 320ms);
    waitForANewLook();
    std::this_thread::sleep_for(2s); // that look waits longer
    const auto again = Clock::now();
    call("availability");
    EXPECT_LT(Clock::now() - again, 100ms) << "it is known to be silent";
}

} // namespace
