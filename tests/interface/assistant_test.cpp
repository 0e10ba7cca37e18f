// What becomes of a capture, with the test as host, model, person and spelling corrector.
#include "flutter/arguments.h"
#include "flutter/fake_messenger.h"
#include "flutter/standard_codec.h"
#include "rewriting/assistant.h"

#include <gmock/gmock.h>

namespace quillmark {
namespace {

using flutter::EncodableMap;
using flutter::EncodableValue;
using testing::ElementsAre;
using testing::HasSubstr;
using Strings = std::vector<std::string>;

const auto rewrite = "respond rewrite-1";

struct AssistantTest : testing::Test, Surroundings {
    void changed() override {}
    void tell(const Notice& notice) override {
        note("tell " + notice.body + (notice.mayCopy ? " (copy)" : ""));
    }
    void show() override { note("show"); }
    void hide() override { note("hide"); }
    void captureAgain() override { note("capture again"); }
    void askForConsent(std::function<void(ModelConsent)> answer) override { answer(consent); }
    void watchPerson() override { wentOn = false; }
    bool personWentOn() override { return wentOn; }
    bool personHoldsModifiers() override { return holds; }
    void after(std::chrono::milliseconds, std::function<void()> work) override { later.push_back(work); }

    // What the assistant has done since the last time: calls to the host as "METHOD TEXT TOKEN", and its own.
    Strings done() {
        for (auto& sent : std::exchange(host.sent, {})) {
            const auto call = flutter::decodeMethodCall(sent.message).value();
            std::string line = call.method;
            for (const char* key : {"request_id", "text", "token"})
                if (const auto* value =
                        flutter::asString(flutter::member(flutter::asMap(call.arguments), key)))
                    line += " " + *value;
            if (call.method != "listen" && call.method != "availability") did.push_back(line);
            if (sent.onReply) replies[call.method] = sent.onReply;
        }
        return std::exchange(did, {});
    }
    void note(const std::string& line) {
        did = done();
        did.push_back(line);
    }
    void reply(const char* method, const EncodableValue& value) {
        did = done();
        replies.at(method)(flutter::encodeSuccessEnvelope(value));
    }
    void modelIs(bool available) {
        reply("availability", available ? EncodableMap{{"state", "available"}}
                                        : EncodableMap{{"state", "unavailable"}, {"detail", "Start one."}});
    }
    void event(const char* kind, const char* key, const char* value, int request = 1) {
        host.deliver(
            "quillmark.quillmark/system_model/events",
            flutter::encodeSuccessEnvelope(EncodableMap{
                {"request_id", "rewrite-" + std::to_string(request)}, {"kind", kind}, {key, value}}));
    }
    void capture(const std::string& text = "i knwo", const std::string& token = "T") {
        assistant.captured({.text = text, .source = "selection", .appId = "editor", .token = token});
    }
    // The same, and what the model makes of it.
    void captureAndRewrite(const std::string& token = "T") {
        capture("i knwo", token);
        modelIs(true);
        event("text", "text", "I know");
        event("done", "finish_reason", "stop");
        done();
    }
    Stage stage() const { return assistant.rewrite().stage; }

    FakeMessenger host;
    std::map<std::string, FakeMessenger::Reply> replies;
    Strings did;
    ModelConsent consent = ModelConsent::given;
    bool wentOn = false, holds = false;
    std::vector<std::function<void()>> later;
    Settings settings;
    SpellingCorrector::Take corrected; // given once the spelling corrector has been asked
    Desktop desktop{host, {}};
    Assistant assistant{host,
                        desktop,
                        {.correct = [this](auto, auto, auto done) { corrected = done; }, .cancel = [] {}},
                        settings,
                        *this};
};

TEST_F(AssistantTest, HandsOutOnlyAWholeAnswer) {
    const struct {
        const char *text, *kind, *key, *value, *result;
    } table[]{
        {"I know", "done", "finish_reason", "stop", " I know\n"},
        {"\nI know \n", "done", "finish_reason", "stop", " I know\n"},
        {" ", "done", "finish_reason", "stop", "answered nothing"},
        {"I kn", "done", "finish_reason", "length", "too long"},
        {"I kn", "error", "error", "Start the server.", "Start the server."},
        {"I kn", "refused", "reason", "refusal", "would not do this: refusal"},
    };
    int request = 0;
    for (const auto& [text, kind, key, value, result] : table) {
        capture(" i knwo\n");
        modelIs(true);
        ++request;
        event("text", "text", text, request);
        EXPECT_EQ(stage(), Stage::rewriting);
        EXPECT_FALSE(canApply(assistant.rewrite()));
        event(kind, key, value, request);
        event(kind, key, "again", request);
        if (stage() == Stage::done) {
            EXPECT_EQ(assistant.rewrite().text, result);
        } else {
            EXPECT_THAT(assistant.rewrite().why, HasSubstr(result));
            EXPECT_FALSE(canApply(assistant.rewrite()));
        }
    }
}

TEST_F(AssistantTest, ANewCaptureEndsTheRewriteBefore) {
    capture("old");
    modelIs(true);
    event("text", "text", "old text");
    EXPECT_THAT(done(), ElementsAre("show", rewrite));
    capture("new");
    EXPECT_THAT(done(), ElementsAre("show", "cancel rewrite-1"));
    event("text", "text", "old text again");
    event("done", "finish_reason", "stop");
    modelIs(true);
    event("text", "text", "new text", 2);
    event("error", "error", "cancelled", 1);
    EXPECT_EQ(assistant.rewrite().text, "new text");
    EXPECT_EQ(stage(), Stage::rewriting);
    ASSERT_EQ(assistant.history().entries().size(), 1u);
    assistant.reopen(0);
    EXPECT_EQ(assistant.rewrite().text, "old text");
    EXPECT_EQ(stage(), Stage::stopped) << "half an answer is not a whole one";
}

TEST_F(AssistantTest, AppliesCopiesAndSaysWhatBecameOfIt) {
    const struct {
        const char *token, *answer;
        Stage stage;
        Strings did;
    } table[]{
        {"T", "pasted", Stage::applied, {"paste I know T"}},
        {"T", "copied-only", Stage::refused, {"paste I know T"}},
        {"", "copied-only", Stage::copied, {"paste I know ", "hide"}},
    };
    int request = 0;
    for (const auto& expected : table) {
        capture("i knwo", expected.token);
        modelIs(true);
        event("text", "text", "I know", ++request);
        event("done", "finish_reason", "stop", request);
        done();
        assistant.apply();
        EXPECT_EQ(stage(), Stage::applying);
        assistant.apply();
        capture("meanwhile");
        reply("paste", expected.answer);
        EXPECT_EQ(stage(), expected.stage);
        EXPECT_EQ(done(), expected.did);
        EXPECT_FALSE(isUnfinished(assistant.rewrite()));
    }
    assistant.copy();
    EXPECT_THAT(done(), ElementsAre("paste I know "));
}

TEST_F(AssistantTest, APasteThatIsNotTakenLeavesTheRewriteAsItWas) {
    captureAndRewrite();
    assistant.apply();
    done();
    replies.at("paste")(flutter::encodeErrorEnvelope("busy", "A paste is already pending"));
    EXPECT_EQ(stage(), Stage::done);
    EXPECT_TRUE(canApply(assistant.rewrite()));
}

TEST_F(AssistantTest, KeepsWhatThePersonHasEdited) {
    captureAndRewrite();
    EXPECT_FALSE(isUnfinished(assistant.rewrite()));
    assistant.edit("I knew");
    EXPECT_TRUE(isUnfinished(assistant.rewrite()));
    assistant.use(defaultInstructions().at(1), "");
    EXPECT_EQ(assistant.history().entries().front().text, "I knew");
    modelIs(true);
    event("text", "text", "Know", 2);
    assistant.edit("not while it grows");
    assistant.stop();
    EXPECT_EQ(assistant.rewrite().text, "Know");
    EXPECT_FALSE(canApply(assistant.rewrite())) << "half an answer could be applied";
    assistant.edit("Knowing");
    assistant.apply();
    EXPECT_THAT(done(), ElementsAre("respond rewrite-2", "cancel rewrite-2", "paste Knowing T"));
}

TEST_F(AssistantTest, CorrectsTheSpellingWhereThereIsNoModel) {
    capture();
    modelIs(false);
    ASSERT_TRUE(corrected);
    EXPECT_TRUE(assistant.rewrite().spellingOnly);
    corrected("i know");
    EXPECT_EQ(stage(), Stage::done);
    assistant.use(defaultInstructions().at(2), "");
    modelIs(false);
    EXPECT_EQ(stage(), Stage::failed);
    EXPECT_THAT(assistant.rewrite().why, HasSubstr("Start one."));
    assistant.again();
    modelIs(true);
    EXPECT_EQ(stage(), Stage::rewriting) << "a model that has come is not used";
}

TEST_F(AssistantTest, AsksBeforeAModelThatWasFoundGetsTheText) {
    consent = ModelConsent::notAsked;
    capture();
    EXPECT_EQ(stage(), Stage::asking);
    EXPECT_THAT(done(), ElementsAre("show"));
    consent = ModelConsent::declined;
    assistant.consentAnswered();
    EXPECT_TRUE(corrected) << "the model was asked all the same, or nobody";
}

TEST_F(AssistantTest, PutsTheOriginalBackWhereTheRewriteStands) {
    const struct {
        Capture now;
        Strings did;
    } table[]{
        {{.text = "I know", .source = "selection", .appId = "editor", .token = "U"}, {"paste i knwo U"}},
        {{.text = "so I know it", .source = "field", .appId = "editor", .token = "U"},
         {"paste so i knwo it U"}},
        {{.text = "I know I know", .source = "field", .appId = "editor", .token = "U"}, {"paste i knwo "}},
        {{.text = "I know", .source = "selection", .appId = "editor"}, {"paste i knwo "}},
        {{.text = "I know", .source = "selection", .appId = "other", .token = "U"}, {"paste i knwo "}},
        {{.text = "I know", .source = "field", .appId = "editor", .token = "U", .truncated = true},
         {"paste i knwo "}},
        {{.text = "else", .source = "field", .appId = "editor", .token = "U"}, {"paste i knwo "}},
    };
    int request = 0;
    for (const auto& [now, did_] : table) {
        capture();
        modelIs(true);
        event("text", "text", "I know", ++request);
        event("done", "finish_reason", "stop", request);
        assistant.apply();
        reply("paste", "pasted");
        done();
        assistant.putBack();
        EXPECT_THAT(done(), ElementsAre("capture again"));
        assistant.captured(now);
        EXPECT_EQ(done(), did_);
        const bool inPlace = did_.front().ends_with("U");
        reply("paste", inPlace ? "pasted" : "copied-only");
        EXPECT_EQ(stage(), inPlace ? Stage::takenBack : Stage::applied);
        EXPECT_EQ(assistant.rewrite().originalCopied, !inPlace);
    }
}

TEST_F(AssistantTest, CopiesTheOriginalWhenNoCaptureComes) {
    captureAndRewrite();
    assistant.apply();
    reply("paste", "pasted");
    assistant.putBack();
    done();
    later.back()();
    EXPECT_THAT(done(), ElementsAre("paste i knwo "));
    capture("late");
    EXPECT_EQ(assistant.rewrite().capture.text, "late");
}

struct AssistantAtOnce : AssistantTest {
    AssistantAtOnce() { settings.way = WayOfWorking::atOnce; }
};

TEST_F(AssistantAtOnce, PutsTheTextInWithoutTheWindow) {
    capture();
    modelIs(true);
    holds = true;
    event("text", "text", "I know");
    event("done", "finish_reason", "stop");
    EXPECT_THAT(done(), ElementsAre(rewrite)) << "it did not wait for the hot key to be let go";
    holds = false;
    later.back()();
    reply("paste", "pasted");
    EXPECT_THAT(done(), ElementsAre("paste I know T"));
    EXPECT_EQ(stage(), Stage::applied);
}

TEST_F(AssistantAtOnce, PutsNothingInWhenThePersonWentOnWorking) {
    capture();
    modelIs(true);
    event("text", "text", "I know");
    wentOn = true;
    event("done", "finish_reason", "stop");
    EXPECT_THAT(done(), ElementsAre(rewrite, "tell You went on working in the meantime. (copy)"));
    assistant.copy();
    EXPECT_THAT(done(), ElementsAre("paste I know "));
}

TEST_F(AssistantAtOnce, TellsWhatWasNotPutInOrNotRewritten) {
    capture();
    modelIs(true);
    event("error", "error", "It died.");
    EXPECT_THAT(done(), ElementsAre(rewrite, "tell It died."));
    capture("");
    EXPECT_THAT(done(), ElementsAre(HasSubstr("tell There was no text")));
    consent = ModelConsent::notAsked;
    capture();
    EXPECT_THAT(done(), ElementsAre(HasSubstr("tell A language model was found")));

    consent = ModelConsent::given;
    capture();
    modelIs(true);
    event("text", "text", "I know", 2);
    event("done", "finish_reason", "stop", 2);
    reply("paste", "copied-only");
    EXPECT_THAT(done(),
                ElementsAre("respond rewrite-2", "paste I know T", "hide", HasSubstr("tell The text there")));
    capture("i knwo", "");
    modelIs(true);
    event("text", "text", "I know", 3);
    event("done", "finish_reason", "stop", 3);
    reply("paste", "copied-only");
    EXPECT_THAT(done(), ElementsAre("respond rewrite-3", "paste I know ", HasSubstr("tell This program")))
        << "a window that was never shown is hidden";
}

} // namespace
} // namespace quillmark
