// Generations and availability against a model server that misbehaves in every way the real ones do.
#include "model/scripted_server.h"
#include "platform/language_model.h"
#include "platform/linux/model_choice.h"
#include "platform/linux/model_server_answer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <future>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

struct Outcome {
    std::vector<std::string> snapshots;
    std::string failure; // empty: the answer ended
    std::optional<std::int64_t> tokens;
};

// Shared by the test and the task, whichever lets go of them later.
struct Promises {
    std::promise<void> first;
    std::promise<Outcome> done;
};

// Takes the answer as a generation does; says when the first piece is there.
platform::Task take(std::shared_ptr<platform::Answer> answer, std::shared_ptr<Promises> promises) {
    struct Wait {
        platform::Answer& answer;
        bool await_ready() const { return answer.isReady(platform::Answer::Until::nextPiece); }
        void await_suspend(platform::Task::Suspended task) const {
            answer.wait(platform::Answer::Until::nextPiece, task);
        }
        std::optional<std::string> await_resume() const { return answer.take(); }
    };
    Outcome outcome;
    try {
        while (auto piece = co_await Wait{*answer}) {
            outcome.snapshots.push_back(*piece);
            if (outcome.snapshots.size() == 1) promises->first.set_value();
        }
        outcome.tokens = answer->tokens();
    } catch (const std::exception& error) {
        outcome.failure = error.what();
    }
    promises->done.set_value(std::move(outcome));
}

struct Asked {
    explicit Asked(const ScriptedServer& server, std::chrono::milliseconds silence = 10s) {
        const platform::GenerationOptions options{platform::SamplingMode::greedy, std::nullopt, 7};
        platform::answerFromServer({{.port = server.port()}, "m"}, {"be kind", "hello", options}, answer,
                                   silence);
        take(answer, promises);
    }
    Outcome outcome() { return promises->done.get_future().get(); }

    std::shared_ptr<platform::Answer> answer = std::make_shared<platform::Answer>();
    std::shared_ptr<Promises> promises = std::make_shared<Promises>();
};

Outcome answerTo(ScriptedServer::Chat chat, std::chrono::milliseconds silence = 10s) {
    const ScriptedServer server(std::move(chat));
    return Asked(server, silence).outcome();
}

constexpr auto stop = "data: {\"choices\":[{\"delta\":{},\"finish_reason\":\"stop\"}]}\n\n";
constexpr auto length = "data: {\"choices\":[{\"delta\":{},\"finish_reason\":\"length\"}]}\n\n";

TEST(ModelServer, StreamsAnAnswerAndCountsIt) {
    std::string request;
    const auto outcome = answerTo([&](Connection& connection) {
        request = connection.request;
        connection.head(200);
        connection.send(": hello\r\n\r\ndata: "
                        "{\"choices\":[{\"delta\":{\"role\":\"assistant\",\"content\":null}}]}\r\n\r\n");
        connection.text("caf\xC3");
        connection.send(
            std::string("data: {\"choices\":[],\"usage\":{\"completion_tokens\":2}}\n\ndata: [DONE]\n\n"));
    });
    EXPECT_NE(outcome.failure, "") << "half a character went through";
    for (const char* part : {"\"model\":\"m\"", "\"stream\":true", "\"include_usage\":true",
                             "\"temperature\":0", "\"max_tokens\":7", "be kind", "hello"})
        EXPECT_NE(request.find(part), std::string::npos) << part;

    const auto good = answerTo([](Connection& connection) {
        connection.head(200);
        connection.text("a");
        connection.text("b");
        connection.send(stop);
        connection.send("data: {\"choices\":[],\"usage\":{\"completion_tokens\":2}}\n\ndata: [DONE]\n\n");
    });
    EXPECT_EQ(good.failure, "");
    EXPECT_EQ(good.snapshots, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(good.tokens, 2);
}

TEST(ModelServer, EndsWithExactlyOneHelpfulFailureWhateverGoesWrong) {
    const auto after = [](std::string bytes) {
        return [bytes](Connection& connection) {
            connection.head(200);
            connection.text("a");
            connection.send(bytes);
        };
    };
    const std::pair<ScriptedServer::Chat, const char*> cases[] = {
        {after(""), "ended before"},
        {after("data: {\"choices\":[{\"del"), "ended before"},
        {after("data: {\"choices\": oops}\n\n"), "cannot be read"},
        {after("data: {\"error\":{\"message\":\"out of memory\"}}\n\n"), "out of memory"},
        {after("data: " + std::string(2 << 20, 'x')), "without an end"},
        {after("data: {\"choices\":[{\"delta\":{\"refusal\":\"no\"},\"finish_reason\":\"stop\"}]}\n\ndata: "
               "[DONE]\n\n"),
         "refusal"},
        {after("data: {\"choices\":[{\"delta\":{},\"finish_reason\":\"content_filter\"}]}\n\n"), "refusal"},
        {[](Connection& connection) {
             connection.head(500);
             connection.send("{\"error\":{\"message\":\"no slot\"}}");
         },
         "no slot"},
        {[](Connection&) {}, "ended before"},
        {[](Connection& connection) {
             connection.head(200);
             connection.text("a");
             EXPECT_TRUE(connection.waitForClose());
         },
         "stopped in the middle"},
    };
    for (const auto& [chat, words] : cases)
        EXPECT_NE(answerTo(chat, 300ms).failure.find(words), std::string::npos) << words;
    const auto unmeasured = answerTo(after(length));
    EXPECT_EQ(unmeasured.failure, "");
    EXPECT_EQ(unmeasured.tokens, 7) << "a server that does not count, at the limit";
}

TEST(ModelServer, SeesTheConnectionClosedAtOnceWhenCancelledThoughNothingComes) {
    std::promise<Clock::time_point> closed;
    const ScriptedServer server([&](Connection& connection) {
        connection.head(200);
        connection.text("a");
        EXPECT_TRUE(connection.waitForClose());
        closed.set_value(Clock::now());
    });
    Asked asked(server);
    asked.promises->first.get_future().wait();
    const auto cancelled = Clock::now();
    asked.answer->cancel();
    EXPECT_EQ(asked.outcome().failure, "CancellationError()");
    EXPECT_LT(closed.get_future().get() - cancelled, 2s);
}

class Availability : public testing::Test {
protected:
    static std::string now() {
        const auto start = Clock::now();
        const auto state = platform::SystemLanguageModel::defaultModel().availability();
        EXPECT_LT(Clock::now() - start, 2s) << "bounded by 250 ms and a slow machine";
        const auto* reason = std::get_if<platform::SystemLanguageModel::UnavailableReason>(&state);
        return reason ? reason->caseName + ": " + reason->description : "available";
    }
    static void set(const ScriptedServer& server) {
        setenv("OPENAI_BASE_URL", ("http://127.0.0.1:" + std::to_string(server.port()) + "/v1").c_str(), 1);
    }
    void TearDown() override { unsetenv("OPENAI_BASE_URL"); }
};

TEST_F(Availability, TellsTheTruthAboutAServerThatWasSet) {
    const auto silent = [](Connection&) {};
    {
        const ScriptedServer ready(silent);
        set(ready);
        EXPECT_EQ(now(), "available");
    }
    EXPECT_TRUE(now().starts_with("appleIntelligenceNotEnabled: The model server at ")) << now();
    {
        const ScriptedServer loading(silent, 503);
        set(loading);
        EXPECT_TRUE(now().starts_with("modelNotReady: ") && now().find("Loading model") != std::string::npos);
    }
    {
        const ScriptedServer empty(silent, 404, R"({"data":null})");
        set(empty);
        EXPECT_TRUE(now().starts_with("modelNotReady: ") && now().find("has no model") != std::string::npos);
    }
    setenv("OPENAI_BASE_URL", "https://example.org/v1", 1);
    EXPECT_TRUE(now().starts_with("appleIntelligenceNotEnabled: OPENAI_BASE_URL is not"));
}

} // namespace
