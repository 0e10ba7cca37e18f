#include "platform/models/server/chat_completion.h"
#include "platform/models/server/model_list.h"
#include "platform/models/server/server_sent_events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Events = std::vector<std::string>;

Events eventsIn(const std::string& bytes, std::size_t pieceSize) {
    platform::ServerSentEvents reader;
    Events events;
    const auto take = [&] {
        while (const auto event = reader.next())
            events.emplace_back(*event);
    };
    for (std::size_t at = 0; at < bytes.size(); at += pieceSize) {
        reader.feed(std::string_view(bytes).substr(at, pieceSize));
        take();
    }
    reader.finish();
    take();
    return events;
}

TEST(ServerSentEvents, AreReadWhereverTheBytesAreCut) {
    const std::pair<std::string, Events> cases[] = {
        {"data: a\n\ndata:b\n\n", {"a", "b"}},
        {"data: a\r\n\r\ndata: b\r\n\r\n", {"a", "b"}},
        {"data: a\r\rdata: b\r\r", {"a", "b"}},
        {"\xEF\xBB\xBF: comment\n\nid: 7\nevent: x\ndata: a\n\n", {"a"}},
        {"data: a\ndata: b\n\n", {"a\nb"}},
        {"data: \xC3\xA9\n\n", {"\xC3\xA9"}},
        {"data: [DONE]\n", {"[DONE]"}}, // the empty line left out at the end
        {"data: half a lin", {}},
        {"error: {\"message\":\"m\"}\n\n", {"{\"message\":\"m\"}"}},
        {"data\n\n", {""}},
    };
    for (const auto& [bytes, expected] : cases)
        for (const std::size_t pieceSize : {1u, 2u, 3u, 1000u})
            EXPECT_EQ(eventsIn(bytes, pieceSize), expected) << bytes;
}

// What the plain forms come to shows in whole answers (chat_answer_test.cpp).
TEST(CompletionChunk, ReadsTheDialectsOfServers) {
    const auto read = [](const char* json) { return platform::readCompletionChunk(json).value(); };
    EXPECT_EQ(
        read(R"({"choices":[{"delta":{"role":"assistant","content":null},"finish_reason":null}]})").text, "");
    for (const char* thinking : {R"({"choices":[{"delta":{"reasoning_content":"r"}}]})",
                                 R"({"choices":[{"delta":{"content":"","reasoning":"r"}}]})"}) {
        EXPECT_EQ(read(thinking).text, "");
        EXPECT_TRUE(read(thinking).thinking);
    }
    for (const char* usage :
         {R"({"choices":[],"usage":{"completion_tokens":9}})",
          R"({"choices":null,"usage":{"completion_tokens":9}})", R"({"usage":{"completion_tokens":9}})"})
        EXPECT_EQ(read(usage).tokens, 9);
    for (const char* error :
         {R"({"error":{"message":"m","code":"x"}})", R"({"error":{"message":"m","code":5}})",
          R"({"error":{"message":"m","code":null}})", R"({"error":"m"})", R"({"message":"m"})"})
        EXPECT_EQ(read(error).error->words, "m");
    for (const char* broken : {"", "{", "[]", "{\"choices\":\"\xC3\"}"})
        EXPECT_FALSE(platform::readCompletionChunk(broken)) << broken;
}

TEST(CompletionRequest, HasTheInstructionsThoughTheyAreEmpty) {
    EXPECT_THAT(platform::completionRequest("", {}, {}),
                testing::HasSubstr(R"({"role":"system","content":""},{"role":"user","content":""})"));
}

TEST(ModelNames, TellThoseThatWriteNoAnswers) {
    for (const char* name :
         {"nomic-embed-text:latest", "text-embedding-3-small", "Qwen3-Embedding-0.6B", "bge-m3",
          "BAAI/bge-reranker-v2-m3", "all-minilm:22m", "intfloat/e5-large", "jina-rerank", "whisper-1"})
        EXPECT_TRUE(platform::isNoChatModel(name)) << name;
    for (const char* name :
         {"qwen3:8b", "llama3.2", "gpt-oss:20b", "mistral-small", "gemma3:e4b", "phi-4", "tiny.gguf"})
        EXPECT_FALSE(platform::isNoChatModel(name)) << name;
}

} // namespace
