// Answers of a model server that misbehaves in every way the real ones do.
#include "model/server_host.h"
#include "platform/models/server/ask_server.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

using ChatAnswer = ServerHost;

const std::string counted = R"(data: {"choices":[],"usage":{"completion_tokens":7}})"
                            "\n\n",
                  countedFewer = R"(data: {"choices":[],"usage":{"completion_tokens":2}})"
                                 "\n\n";

// The last text of a generation that ended well.
std::string textOf(const std::vector<std::string>& events) {
    if (events.size() < 2 || !events.back().starts_with("a done")) return "no whole answer: " + events.back();
    return events[events.size() - 2].substr(std::string("a text text=").size());
}

TEST_F(ChatAnswer, IsReadHoweverItIsCutIntoPieces) {
    const auto request = std::make_shared<std::promise<std::string>>();
    const auto events = answerTo([request](ClientConnection& connection) {
        request->set_value(connection.request);
        connection.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        const std::string stream =
            ": hello\r\n\r\n"
            R"(data: {"choices":[{"delta":{"role":"assistant","content":null}}]})"
            "\r\n\r\n"
            "data: {\"choices\":[{\"delta\":{\"content\":\"\xC3\xA9\"}}]}\r\n\r\n"
            "data: {\"choices\":[{\"delta\":{\"content\":\"\xF0\x9F\x98\x80 \\ud83d\\ude00\"}}]}\r\n\r\n" +
            done;
        for (std::size_t at = 0; at < stream.size(); at += 3) {
            const auto piece = stream.substr(at, 3);
            connection.send(std::to_string(piece.size()) + "\r\n" + piece + "\r\n");
        }
        connection.send("0\r\n\r\n");
    });
    EXPECT_EQ(textOf(events), "\xC3\xA9\xF0\x9F\x98\x80 \xF0\x9F\x98\x80");
    const auto asked = request->get_future().get();
    for (const char* part :
         {R"("model":"m")", R"("stream":true)", R"("include_usage":true)", R"("temperature":0)",
          R"("max_tokens":7)", R"({"role":"system","content":"be kind"})", "hello"})
        EXPECT_THAT(asked, HasSubstr(part));
}

TEST_F(ChatAnswer, EndsAsTheServerSaysOrAtTheLimitWhenItDoesNotSay) {
    const std::pair<std::string, const char*> table[] = {
        {finish("stop") + done, "stop"},
        {finish("stop") + counted + done, "stop"}, // exactly as long as it may be
        {counted + done, "length"},
        {countedFewer + done, "stop"},
        {done, "stop"},
        {finish("length") + done, "length"},                // by a server that does not count
        {finish("length") + countedFewer + done, "length"}, // its context is full
        {finish("eos_token") + done, "stop"},
    };
    for (const auto& [bytes, reason] : table)
        EXPECT_THAT(answerTo(writes(bytes)),
                    ElementsAre(firstText, std::string("a done finish_reason=") + reason))
            << bytes;
}

TEST_F(ChatAnswer, EndsThoughTheConnectionStaysOpen) {
    for (const char* ping : {"", ": ping\n\n"}) {
        const auto events = answerTo([ping](ClientConnection& connection) {
            writes("")(connection);
            repeats(finish("stop"), ping)(connection);
        });
        EXPECT_THAT(events, ElementsAre(firstText, "a done finish_reason=stop"));
    }
}

TEST_F(ChatAnswer, LeavesOutWhatTheModelThinks) {
    const auto content = [](const std::string& text) {
        return R"(data: {"choices":[{"delta":{"content":")" + text + "\"}}]}\n\n";
    };
    const struct {
        std::vector<std::string> pieces;
        const char *prompt, *answer;
    } table[]{
        {{"<think>Hm.</think>\\n\\nYes"}, "?", "Yes"},
        {{"\\n<th", "ink>Hm", " <b>.</thi", "nk> ", " Yes"}, "?", "Yes"},
        {{"[THINK]Hm[/THINK]", "Yes"}, "?", "Yes"},
        {{"Hm, ", "well.</think>", "Yes"}, "?", "Yes"}, // the server's template wrote the first mark itself
        {{"a <", "b and a </", "b"}, "?", "a <b and a </b"},
        {{"a <"}, "?", "a <"},
        {{"Yes <thi", "nk>No</think>"}, "?", "Yes <think>No</think>"},
        {{"<think>", "x</think>", "y"}, "What is <think>?", "<think>x</think>y"},
    };
    for (const auto& [pieces, prompt, answer] : table) {
        std::string stream = "HTTP/1.1 200 OK\r\n\r\n"
                             R"(data: {"choices":[{"delta":{"reasoning_content":"I wonder"}}]})"
                             "\n\n";
        for (const auto& piece : pieces)
            stream += content(piece);
        EXPECT_EQ(textOf(answerTo(sends(stream + done), prompt)), answer) << pieces.front();
    }
}

TEST_F(ChatAnswer, ComesToExactlyOneHelpfulFailureWhateverGoesWrong) {
    const std::pair<Chat, const char*> table[] = {
        {writes(""), "ended before"},
        {writes("data: {\"choices\":[{\"del"), "ended before"},
        {writes("data: {\"choices\": oops}\n\n"), "cannot be read"},
        {writes("data: {\"choices\":[{\"delta\":{\"content\":\"caf\xC3\"}}]}\n\n"), "cannot be read"},
        {writes("data: {\"error\":{\"message\":\"x-norefusal: out of memory\"}}\n\n"), "out of memory"},
        {writes("data: " + std::string(2 << 20, 'x')), "without an end"},
        {writes(finish("abort") + done), "gave up"},
        {writes(finish("tool_calls") + done), "(tool_calls)"},
        {sends(""), "ended before"},
        {sends("\x16\x03\x01 not HTTP"), "ended before"},
        {sends("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n"), "ended before"},
        {sends("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\ndata: [DO"), "ended before"},
        {sends("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n<html>\n\n</html>\n\n"),
         "not a model's answer"},
        {sends("HTTP/1.1 307 X\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n"), "(HTTP 307)"},
        {sends("HTTP/1.1 500 X\r\n\r\n{\"error\":{\"message\":\"no guardrailViolation\"}}"),
         "(HTTP 500): no guard"},
        {repeats("HTTP/1.1 500 X\r\n\r\n", std::string(5000, '.')), "(HTTP 500)"},
        {repeats("HTTP/1.1 200 OK\r\n\r\n", std::string(50'000, '\n')), "not a model's answer"},
    };
    for (const auto& [chat, words] : table) {
        const auto events = answerTo(chat);
        ASSERT_FALSE(events.empty()) << words;
        EXPECT_THAT(events.back(), AllOf(StartsWith("a error error=The model server at 127.0.0.1:"),
                                         HasSubstr(words), EndsWith(".")));
        EXPECT_EQ(std::ranges::count(events, firstText), std::ssize(events) - 1) << words;
    }
}

TEST_F(ChatAnswer, IsRefusedOnlyByTheModelItself) {
    for (const auto& refusal : {finish("content_filter") + done,
                                R"(data: {"choices":[{"delta":{"refusal":"no"}}]})"
                                "\n\n" +
                                    finish("stop"),
                                std::string(R"(data: {"error":{"message":"no","code":"content_filter"}})"
                                            "\n\n")})
        EXPECT_THAT(answerTo(writes(refusal)), ElementsAre(firstText, HasSubstr("a refused reason=")));
    for (const char* code : {"content_filter", "content_policy_violation"})
        EXPECT_THAT(
            answerTo(sends(std::string("HTTP/1.1 400 X\r\n\r\n{\"error\":{\"message\":\"no\",\"code\":\"") +
                           code + "\"}}")),
            ElementsAre("a refused reason=The model would not answer (refusal): no"));
    EXPECT_THAT(answerTo(writes(done)), ElementsAre(firstText, "a done finish_reason=stop"));
}

// With limits of the test's own.
TEST_F(ChatAnswer, HasFailedWhenTheServerFallsSilentButMayBeLongInComing) {
    const auto failureOf = [&](Chat chat, const platform::SilenceLimits& limits) {
        server.become({.chat = std::move(chat)});
        const auto answer = std::make_shared<platform::Answer>();
        platform::askServer({.server = {.address = platform::readServerAddress(server.url()).value()}}, {},
                            answer, {}, limits);
        for (const auto start = Clock::now();
             !answer->isReady(platform::Answer::Until::end) && Clock::now() - start < 20s;)
            std::this_thread::sleep_for(1ms);
        std::string seen;
        try {
            while (const auto text = answer->take())
                seen += *text + ' ';
            ADD_FAILURE() << "half an answer passed for a whole one";
        } catch (const std::exception& error) {
            seen += error.what();
        }
        return seen;
    };
    const Chat stalls = [](ClientConnection& connection) {
        connection.head(200);
        connection.send(": ping\n\ndata: {\"choices\":[{\"delta\":{\"role\":\"assistant\"}}]}\n\n");
        EXPECT_FALSE(connection.waitForClose(300ms));
        connection.text("a");
        EXPECT_TRUE(connection.waitForClose());
    };
    EXPECT_THAT(failureOf(stalls, {.beforeText = 20s, .inMidAnswer = 100ms}),
                AllOf(StartsWith("a The model server"), HasSubstr("stopped in the middle")));
    EXPECT_THAT(failureOf(saysNothing, {.beforeText = 100ms}), HasSubstr("did not answer in time"));
}

TEST_F(ChatAnswer, IsGivenUpAtOnceWhenCancelledThoughNothingComes) {
    for (const bool begun : {false, true}) {
        struct Seen {
            std::promise<void> request, close;
        };
        const auto seen = std::make_shared<Seen>();
        server.become({.chat = [=](ClientConnection& connection) {
            if (begun) writes("")(connection);
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

// A model that takes no prompts answers 400, and so do servers that do not know how to turn thinking off.
TEST_F(ChatAnswer, IsAskedOfTheNextModelWhenTheFirstTakesNoPrompts) {
    const auto asked = std::make_shared<std::vector<std::string>>();
    server.become(
        {.chat =
             [asked](ClientConnection& connection) {
                 const auto& request = connection.request;
                 const auto at = request.find(R"("model":")") + 9;
                 const auto model = request.substr(at, request.find('"', at) - at);
                 const bool thinkingOff = request.find(R"("enable_thinking":false)") != std::string::npos;
                 asked->push_back(model + (thinkingOff ? " off" : ""));
                 if (model == "vectors")
                     return connection.send(
                         "HTTP/1.1 400 X\r\n\r\n{\"error\":{\"message\":\"does not support chat\"}}");
                 writes(done)(connection);
             },
         .models = R"({"object":"list","data":[{"id":"my-embedder","object":"model","owned_by":"vllm"},
                   {"id":"vectors","object":"model","owned_by":"vllm"},{"id":"chat","object":"model"}]})"});
    choose(server.url());
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(firstText, "a done finish_reason=stop"));
    EXPECT_THAT(*asked, ElementsAre("vectors off", "vectors", "chat off"));
    asked->clear();
    respond("b");
    EXPECT_THAT(allEvents(), ElementsAre("b text text=a", "b done finish_reason=stop"));
    EXPECT_THAT(*asked, ElementsAre("chat"));
    choose(server.url(), "vectors");
    respond("a");
    EXPECT_THAT(allEvents(), ElementsAre(HasSubstr("does not support chat")));
}

} // namespace
