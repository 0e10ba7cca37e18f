// Generations and availability against a model server that misbehaves in every way the real ones do, and
// without one.
#include "model/loop_host.h"
#include "platform/language_model.h"
#include "platform/models/generation/background_executor.h"
#include "platform/models/model_choice.h"
#include "platform/models/server/answer.h"
#include "testing/model_server/scripted_server.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <thread>

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;
using Chat = std::function<void(Connection&)>;

// A host whose server was set explicitly.
struct ModelServer : testing::Test, LoopHost {
    ModelServer() { set(server); }
    ~ModelServer() override {
        unsetenv("OPENAI_BASE_URL");
        unsetenv("OLLAMA_HOST");
    }
    static void set(const std::string& url) { setenv("OPENAI_BASE_URL", url.c_str(), 1); }
    static void set(const ScriptedServer& other) {
        set("http://127.0.0.1:" + std::to_string(other.port()) + "/v1");
    }

    std::vector<std::string> answerTo(Chat chat) {
        server.become({.chat = std::move(chat)});
        respond("a");
        return allEvents();
    }

    ScriptedServer server;
};

// After the first word "a".
Chat after(std::string bytes) {
    return [bytes](Connection& connection) {
        connection.head(200);
        connection.text("a");
        connection.send(bytes);
    };
}

Chat answer(std::string bytes) {
    return [bytes](Connection& connection) { connection.send(bytes); };
}

// Until the other end has had enough.
Chat endless(const std::string& start, const std::string& piece) {
    return [start, piece](Connection& connection) {
        connection.send(start);
        const auto begin = Clock::now();
        bool closed = false;
        while (!(closed = connection.waitForClose(1ms)) && Clock::now() - begin < 5s)
            connection.send(piece);
        EXPECT_TRUE(closed);
    };
}

std::string finish(const char* reason) {
    return std::string("data: {\"choices\":[{\"delta\":{},\"finish_reason\":\"") + reason + "\"}]}\n\n";
}

void busy(Connection& connection) { connection.waitForClose(); }

constexpr auto text = "a text text=a";
const std::string counted = "data: {\"choices\":[],\"usage\":{\"completion_tokens\":7}}\n\n",
                  countedFewer = "data: {\"choices\":[],\"usage\":{\"completion_tokens\":2}}\n\n",
                  done = "data: [DONE]\n\n";

TEST_F(ModelServer, StreamsAnAnswerAndCountsIt) {
    const auto request = std::make_shared<std::promise<std::string>>();
    const auto events = answerTo([request](Connection& connection) {
        request->set_value(connection.request);
        connection.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        const auto chunk = [&](const std::string& bytes) {
            connection.send(std::string(1, "0123456789abcdef"[bytes.size()]) + "\r\n" + bytes + "\r\n");
        };
        const std::string stream =
            ": hello\r\n\r\ndata: "
            "{\"choices\":[{\"delta\":{\"role\":\"assistant\",\"content\":null}}]}\r\n\r\n"
            "data: {\"choices\":[{\"delta\":{\"content\":\"\xC3\xA9\"}}]}\r\n\r\n"
            "data: {\"choices\":[{\"delta\":{\"content\":\"\xF0\x9F\x98\x80 \\ud83d\\ude00\"}}]}\r\n\r\n";
        for (std::size_t at = 0; at < stream.size(); at += 3)
            chunk(stream.substr(at, 3));
        connection.send("0\r\n\r\n");
    });
    EXPECT_THAT(events,
                ElementsAre("a text text=\xC3\xA9", "a text text=\xC3\xA9\xF0\x9F\x98\x80 \xF0\x9F\x98\x80",
                            HasSubstr("ended before")));
    const auto asked = request->get_future().get();
    for (const char* part : {"\"model\":\"m\"", "\"stream\":true", "\"include_usage\":true",
                             "\"temperature\":0", "\"max_tokens\":7", "be kind", "hello"})
        EXPECT_THAT(asked, HasSubstr(part));

    const std::pair<std::string, const char*> ends[] = {
        {finish("stop") + done, "stop"},
        {finish("stop") + counted + done, "length"},
        {finish("stop") + counted, "length"},
        {done, "stop"},
        {finish("length") + done, "length"},                // by a server that does not count
        {finish("length") + countedFewer + done, "length"}, // its context is full
        {finish("eos_token") + done, "stop"},
    };
    for (const auto& [bytes, reason] : ends)
        EXPECT_THAT(answerTo(after(bytes)), ElementsAre(text, std::string("a done finish_reason=") + reason));
}

TEST_F(ModelServer, EndsAnAnswerThoughTheConnectionStaysOpen) {
    for (const char* ping : {"", ": ping\n\n"}) {
        const auto events = answerTo([ping](Connection& connection) {
            after("")(connection);
            endless(finish("stop"), ping)(connection);
        });
        EXPECT_THAT(events, ElementsAre(text, "a done finish_reason=stop"));
    }
}

TEST_F(ModelServer, EndsWithExactlyOneHelpfulFailureWhateverGoesWrong) {
    const std::pair<Chat, const char*> table[] = {
        {after(""), "ended before"},
        {after("data: {\"choices\":[{\"del"), "ended before"},
        {after("data: {\"choices\": oops}\n\n"), "cannot be read"},
        {after("data: {\"choices\":[{\"delta\":{\"content\":\"caf\xC3\"}}]}\n\n"), "cannot be read"},
        {after("data: {\"error\":{\"message\":\"out of memory\"}}\n\n"), "out of memory"},
        {after("data: " + std::string(2 << 20, 'x')), "without an end"},
        {after(finish("abort") + done), "gave up"},
        {after(finish("tool_calls") + done), "(tool_calls)"},
        {answer(""), "ended before"},
        {answer("\x16\x03\x01 not HTTP"), "ended before"},
        {answer("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n"), "ended before"},
        {answer("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\ndata: [DO"), "ended before"},
        {answer("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n<html>\n\n</html>\n\n"),
         "not a model's answer"},
        {answer("HTTP/1.1 307 X\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n"),
         "(HTTP 307)"},
        {answer("HTTP/1.1 500 X\r\n\r\n{\"error\":{\"message\":\"no slot\"}}"), "(HTTP 500): no slot"},
        {endless("HTTP/1.1 500 X\r\n\r\n", std::string(5000, '.')), "(HTTP 500)"},
        {endless("HTTP/1.1 200 OK\r\n\r\n", std::string(50'000, '\n')), "not a model's answer"},
        {endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1;", std::string(5000, 'x')),
         "ended before"},
    };
    for (const auto& [chat, words] : table) {
        const auto events = answerTo(chat);
        ASSERT_FALSE(events.empty()) << words;
        EXPECT_THAT(events.back(), AllOf(StartsWith("a error error=The model server at 127.0.0.1:"),
                                         HasSubstr(words), EndsWith(".")));
        EXPECT_EQ(std::ranges::count(events, text), std::ssize(events) - 1) << words;
    }
    for (const auto& refusal :
         {finish("content_filter") + done,
          "data: {\"choices\":[{\"delta\":{\"refusal\":\"no\"}}]}\n\n" + finish("stop")})
        EXPECT_THAT(answerTo(after(refusal)), ElementsAre(text, HasSubstr("a refused reason=")));
    EXPECT_THAT(answerTo(after(done)), ElementsAre(text, "a done finish_reason=stop"));
}

// With limits of the test's own.
TEST_F(ModelServer, HasFailedWhenItFallsSilentButMayThinkForLong) {
    const auto failureOf = [&](Chat chat, const platform::SilenceLimits& limits) {
        server.become({.chat = std::move(chat)});
        const auto answer = std::make_shared<platform::Answer>();
        platform::answerFromServer({{.port = server.port()}, "m"}, {"", "", {}}, answer, limits);
        for (const auto start = Clock::now();
             !answer->isReady(platform::Answer::Until::end) && Clock::now() - start < 20s;)
            std::this_thread::sleep_for(1ms);
        std::string seen;
        try {
            while (const auto whole = answer->take())
                seen += *whole + ' ';
            ADD_FAILURE() << "half an answer passed for a whole one";
        } catch (const std::exception& error) {
            seen += error.what();
        }
        return seen;
    };
    const Chat stalls = [](Connection& connection) {
        connection.head(200);
        connection.send(": ping\n\ndata: {\"choices\":[{\"delta\":{\"role\":\"assistant\"}}]}\n\n");
        EXPECT_FALSE(connection.waitForClose(300ms));
        connection.text("a");
        EXPECT_TRUE(connection.waitForClose());
    };
    EXPECT_THAT(failureOf(stalls, {.beforeText = 20s, .inMidAnswer = 100ms}),
                AllOf(StartsWith("a The model server"), HasSubstr("stopped in the middle")));
    EXPECT_THAT(failureOf(busy, {.beforeText = 100ms}), HasSubstr("did not answer in time"));
}

TEST_F(ModelServer, SeesTheConnectionClosedWhenCancelledThoughNothingComes) {
    for (const bool begun : {false, true}) {
        struct Seen {
            std::promise<void> request, close;
        };
        const auto seen = std::make_shared<Seen>();
        server.become({.chat = [=](Connection& connection) {
            if (begun) after("")(connection);
            seen->request.set_value();
            if (connection.waitForClose()) seen->close.set_value();
        }});
        respond("a");
        const auto asked = seen->request.get_future(), closed = seen->close.get_future();
        eventsUntil(
            [&] { return asked.wait_for(0s) == std::future_status::ready && (!begun || hasEvents()); });
        cancel("a");
        cancel("a");
        EXPECT_THAT(allEvents(), ElementsAre("a error error=cancelled"));
        EXPECT_EQ(closed.wait_for(5s), std::future_status::ready);
    }
}

TEST_F(ModelServer, IsReportedAsItIsAndNeverReplaced) {
    const auto reported = [&](const char* reason, const char* words) {
        EXPECT_THAT(call("availability"),
                    AllOf(StartsWith(std::string("state=unavailable reason=") + reason), HasSubstr(words)));
        respond("a");
        EXPECT_THAT(allEvents(), ElementsAre(AllOf(StartsWith("a error error="), HasSubstr(words))));
    };
    EXPECT_THAT(call("availability"), StartsWith("state=available os_build="));
    server.become({.health = 503});
    reported("model_not_ready", ": Loading model. Wait");
    {
        const ScriptedServer empty({.health = 404, .models = R"({"data":null})"});
        set(empty);
        reported("model_not_ready", "has no model");
        set(ScriptedServer({.models = "<html>"}));
        reported("not_enabled", "cannot be reached");
    }
    const ScriptedServer other({.models = "<html>"});
    set(other);
    reported("not_enabled", "does not speak the language");
    set("https://example.org/v1");
    reported("not_enabled", "OPENAI_BASE_URL is not");
}

TEST_F(ModelServer, IsFoundThoughOtherAnswersKeepTheBackgroundThreadsBusy) {
    std::promise<void> found;
    const auto wait = found.get_future().share();
    for (int i = 0; i < 100; ++i)
        boost::asio::post(platform::backgroundPool(), [wait] { wait.wait(); });
    EXPECT_TRUE(std::holds_alternative<platform::ServedModel>(platform::chooseModel()));
    found.set_value();
}

// Many a small server answers one call at a time.
TEST_F(ModelServer, IsAskedAndWaitedForWhileItIsBusy) {
    server.become({.chat = after(done), .probe = busy});
    EXPECT_THAT(call("availability"), AllOf(StartsWith("state=unavailable reason=model_not_ready"),
                                            HasSubstr("does not answer at the moment")));
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(text, "a done finish_reason=stop"));
}

TEST(ModelServers, AreOnThisComputerUnlessSetExplicitly) {
    unsetenv("OPENAI_BASE_URL");
    for (const auto& [set, used] : {std::pair("127.0.0.2:81", "127.0.0.2:81"),
                                    {"http://[::1]:81", "[::1]:81"},
                                    {"0.0.0.0:81", "localhost:81"},
                                    {"127.example.com:81", "localhost:11434"},
                                    {"192.0.2.1", "localhost:11434"}}) {
        setenv("OLLAMA_HOST", set, 1);
        EXPECT_EQ(platform::modelServers().candidates.front().address(), used);
    }
    unsetenv("OLLAMA_HOST");
}

struct WithoutServer : ModelServer {
    WithoutServer() {
        unsetenv("OPENAI_BASE_URL");
        const auto found = platform::chooseModel();
        if (std::holds_alternative<platform::ServedModel>(found))
            skipped = "a model server runs on this computer";
    }
    void SetUp() override {
        if (!skipped.empty()) GTEST_SKIP() << skipped;
    }
    std::string skipped;
};

TEST_F(WithoutServer, TheReportAndEveryAnswerSayWhatToDo) {
    EXPECT_THAT(call("availability"), AllOf(StartsWith("state=unavailable reason=not_enabled detail="),
                                            HasSubstr("Start a local model server")));
    respond("a", "teh");
    EXPECT_THAT(allEvents(), ElementsAre(AllOf(StartsWith("a error error="), HasSubstr("Start a local"))));
}

TEST_F(WithoutServer, TheServerOfAUsualPortIsUsedAlsoWhileItIsBusy) {
    server.become({.chat = after(done)});
    setenv("OLLAMA_HOST", ("127.0.0.1:" + std::to_string(server.port())).c_str(), 1);
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(text, "a done finish_reason=stop"));
    server.become({.chat = after(done), .probe = busy});
    std::this_thread::sleep_for(1100ms); // for so long what was found out is not asked again
    respond("a", "teh");
    EXPECT_THAT(allEvents(), ElementsAre(text, "a done finish_reason=stop"));

    for (const auto& probe : {Chat(busy), answer("HTTP/1.1 503 X\r\n\r\n<html>")}) {
        const ScriptedServer stranger({.probe = probe});
        setenv("OLLAMA_HOST", ("127.0.0.1:" + std::to_string(stranger.port())).c_str(), 1);
        EXPECT_THAT(call("availability"), StartsWith("state=unavailable reason=not_enabled"));
        respond("a", "teh");
        EXPECT_THAT(allEvents(), ElementsAre(StartsWith("a error error=")));
    }
}

} // namespace
