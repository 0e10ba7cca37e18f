// The rewriter of the interface that comes with the host, with the test as the host's model.
#include "flutter/arguments.h"
#include "flutter/fake_messenger.h"
#include "flutter/standard_codec.h"
#include "rewriter.h"

#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace quillmark {
namespace {

using testing::ElementsAre;
using Strings = std::vector<std::string>;

struct Rewriting : testing::Test {
    // What the rewriter has called since the last time, as "METHOD REQUEST".
    Strings calls() {
        Strings calls;
        for (const auto& sent : std::exchange(host.sent, {})) {
            const auto call = flutter::decodeMethodCall(sent.message).value();
            const auto* request =
                flutter::asString(flutter::member(flutter::asMap(call.arguments), "request_id"));
            calls.push_back(call.method + (request ? " " + *request : ""));
        }
        return calls;
    }
    // Has a text rewritten by a host that says so of its language model.
    void rewrite(const std::string& text,
                 const flutter::EncodableMap& availability = {{"state", "available"}}) {
        rewriter.rewrite(text);
        const auto question = host.sent.back();
        host.sent.pop_back();
        question.onReply(flutter::encodeSuccessEnvelope(availability));
    }
    // What other threads hand over, until the condition holds.
    void workUntil(const std::function<bool()>& condition) {
        while (!condition()) {
            std::unique_lock lock(mutex_);
            if (!filled_.wait_for(lock, std::chrono::seconds(20), [&] { return !work_.empty(); })) return;
            const auto work = std::exchange(work_, {});
            lock.unlock();
            for (const auto& piece : work)
                piece();
        }
    }
    void event(const char* request, const char* kind, const char* key, const char* value) {
        host.deliver("quillmark.quillmark/system_model/events",
                     flutter::encodeSuccessEnvelope(
                         flutter::EncodableMap{{"request_id", request}, {"kind", kind}, {key, value}}));
    }
    Strings outcomes() { return std::exchange(outcomes_, {}); }

    FakeMessenger host;
    Strings outcomes_;
    std::mutex mutex_;
    std::condition_variable filled_;
    std::vector<std::function<void()>> work_;
    Rewriter rewriter{
        host,
        [this](std::function<void()> work) {
            const std::lock_guard lock(mutex_);
            work_.push_back(std::move(work));
            filled_.notify_one();
        },
        {.growing = [](const std::string&) {},
         .done = [this](const std::string& text) { outcomes_.push_back("done " + text); },
         .failed = [this](const std::string& why) { outcomes_.push_back("failed " + why); },
         .spellingOnly = [this](const std::string& why) { outcomes_.push_back("only " + why); }}};
};

TEST_F(Rewriting, HandsOutOnlyAWholeAnswer) {
    const struct {
        const char *text, *kind, *key, *value, *outcome;
    } table[]{
        {"I know", "done", "finish_reason", "stop", "done  I know\n"},
        {"\nI know \n", "done", "finish_reason", "stop", "done  I know\n"},
        {" ", "done", "finish_reason", "stop", "failed the model answered nothing; try again"},
        {"I kn", "done", "finish_reason", "length",
         "failed the text is too long for this model; select less of it"},
        {"I kn", "error", "error", "Start the server.", "failed Start the server."},
        {"I kn", "error", "error", "cancelled", "failed cancelled"},
        {"I kn", "refused", "reason", "refusal", "failed the model would not: refusal"},
    };
    EXPECT_THAT(calls(), ElementsAre("listen"));
    for (const auto& [text, kind, key, value, outcome] : table) {
        rewrite(" i knwo\n");
        const auto request = calls().at(0).substr(std::string("respond ").size());
        event(request.c_str(), "text", "text", text);
        EXPECT_THAT(outcomes(), ElementsAre());
        event(request.c_str(), kind, key, value);
        event(request.c_str(), kind, key, value);
        EXPECT_THAT(outcomes(), ElementsAre(outcome));
    }
}

TEST_F(Rewriting, GivesUpTheOldTextForANewOne) {
    rewrite("old");
    event("rewrite-1", "text", "text", "old text");
    rewrite("new");
    EXPECT_THAT(calls(), ElementsAre("listen", "respond rewrite-1", "cancel rewrite-1", "respond rewrite-2"));
    event("rewrite-1", "text", "text", "old text again");
    event("rewrite-1", "done", "finish_reason", "stop");
    event("rewrite-2", "text", "text", "new text");
    event("rewrite-1", "error", "error", "cancelled");
    EXPECT_THAT(outcomes(), ElementsAre());
    event("rewrite-2", "done", "finish_reason", "stop");
    EXPECT_THAT(outcomes(), ElementsAre("done new text"));
    rewrite("third");
    EXPECT_THAT(calls(), ElementsAre("respond rewrite-3"));
}

TEST_F(Rewriting, CorrectsTheSpellingWithoutAModelAndSaysSo) {
    const flutter::EncodableMap none{{"state", "unavailable"}, {"detail", "Start a server."}};
    rewrite("teh", none);
    rewrite(" i knwo teh way.\n", none);
    EXPECT_THAT(outcomes(), ElementsAre("only Start a server.", "only Start a server."));
    EXPECT_THAT(calls(), ElementsAre("listen"));
    workUntil([&] { return !outcomes_.empty(); });
    EXPECT_THAT(outcomes(), ElementsAre("done  I know the way.\n"));
    rewrite("and now with a model");
    EXPECT_THAT(calls(), ElementsAre("respond rewrite-3"));
}

} // namespace
} // namespace quillmark
