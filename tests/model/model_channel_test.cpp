// The model channel: what each call answers, and how events find their listener.
#include "model/model_host.h"

#include <gmock/gmock.h>

using flutter::EncodableMap;
using flutter::EncodableValue;
using platform::SystemLanguageModel;
using simulated::Script;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

namespace {

struct ModelChannel : testing::Test, ModelHost {
    ModelChannel() { listen(); }
};

} // namespace

TEST_F(ModelChannel, AnswersEveryCallAndStartsNothingForOneItRefuses) {
    const EncodableMap numbered{{"request_id", 7}};
    const struct {
        const char* method;
        EncodableValue arguments;
        const char* answer;
    } table[]{
        {"respond", {}, "error args: request_id required"},
        {"respond", "a", "error args: request_id required"},
        {"respond", EncodableMap{}, "error args: request_id required"},
        {"respond", EncodableMap{{"prompt", "p"}}, "error args: request_id required"},
        {"respond", numbered, "error args: request_id required"},
        {"respond", EncodableMap{{"request_id", "a"}, {7, "seven"}}, "error args: request_id required"},
        {"cancel", {}, "null"},
        {"cancel", numbered, "null"},
        {"cancel", EncodableMap{{"request_id", "never started"}}, "null"},
        {"prewarm", {}, "null"},
        {"Respond", EncodableMap{{"request_id", "a"}}, "not implemented"},
        {"", {}, "not implemented"},
    };
    for (const auto& [method, arguments, answer] : table)
        EXPECT_EQ(call(method, arguments), answer) << method;
    EXPECT_THAT(allEvents(), IsEmpty());
    EXPECT_THAT(world.languageModel.asked, IsEmpty());
    EXPECT_EQ(world.languageModel.availabilityQuestions, 0);
}

TEST_F(ModelChannel, HandsTheModelWhatTheCallSaysAndDefaultsForTheRest) {
    const auto greedy = platform::SamplingMode::greedy;
    const std::int64_t few = -5'000'000'000;
    const EncodableMap full{{"request_id", "a"},
                            {"instructions", "Be brief"},
                            {"prompt", "Hi"},
                            {"greedy", false},
                            {"max_tokens", 9}};
    const EncodableMap ofOtherTypes{
        {"request_id", "a"}, {"instructions", 1}, {"prompt", true}, {"greedy", "false"}, {"max_tokens", "9"}};
    const struct {
        EncodableMap arguments;
        const char *instructions, *prompt;
        std::optional<platform::SamplingMode> sampling;
        std::int64_t limit;
    } table[]{
        {{{"request_id", ""}}, "", "", greedy, 512},
        {full, "Be brief", "Hi", std::nullopt, 9},
        {ofOtherTypes, "", "", greedy, 512},
        {{{"request_id", "a"}, {"greedy", true}, {"max_tokens", few}}, "", "", greedy, few},
    };
    for (const auto& row : table) {
        EXPECT_EQ(call("respond", row.arguments), "null");
        const auto& asked = world.languageModel.asked.back();
        EXPECT_EQ(asked.instructions, row.instructions);
        EXPECT_EQ(asked.prompt, row.prompt);
        EXPECT_EQ(asked.options.sampling, row.sampling);
        EXPECT_EQ(asked.options.temperature, std::nullopt);
        EXPECT_EQ(asked.options.maximumResponseTokens, row.limit);
        EXPECT_EQ(asked.tools, 0u);
    }
    EXPECT_EQ(world.languageModel.asked.size(), std::size(table));
}

TEST_F(ModelChannel, ReportsTheModelAsItIsAtEachCall) {
    const std::pair<const char*, const char*> reasons[]{{"deviceNotEligible", "no_device"},
                                                        {"appleIntelligenceNotEnabled", "not_enabled"},
                                                        {"modelNotReady", "model_not_ready"},
                                                        {"onStrike", "not_supported"}};
    world.operatingSystem.versionString = "Ours 1";
    for (const auto& [reason, code] : reasons) {
        world.languageModel.availability = SystemLanguageModel::UnavailableReason{reason, reason};
        EXPECT_EQ(call("availability"), std::string("state=unavailable reason=") + code +
                                            " detail=" + reason + " os_build=Ours 1 sdk=FoundationModels");
    }
    world.languageModel.availability = SystemLanguageModel::Available{};
    world.operatingSystem.versionString = "Ours 2";
    EXPECT_EQ(call("availability"), "state=available os_build=Ours 2 sdk=FoundationModels");
}

TEST_F(ModelChannel, LeavesTheModelAloneOnASystemThatIsTooOld) {
    world.operatingSystem = {{25, 9, 9}, "Ours 25"};
    EXPECT_EQ(call("availability"), "state=unavailable reason=not_supported "
                                    "detail=macOS 26 with Apple Intelligence required os_build=Ours 25");
    EXPECT_EQ(respond("a"), "null");
    EXPECT_THAT(allEvents(), ElementsAre("a error error=system model unavailable on this macOS"));
    EXPECT_EQ(world.languageModel.availabilityQuestions, 0);
    EXPECT_THAT(world.languageModel.asked, IsEmpty());
}

TEST_F(ModelChannel, AnswersACallBeforeTheFirstEventOfItsGeneration) {
    model(Script{}.says(0s, "Hello"));
    const auto answer =
        world.interface().ask("quillmark.quillmark/system_model",
                              flutter::encodeMethodCall({"respond", EncodableMap{{"request_id", "a"}}}));
    world.interface().onMessage = [&](const auto&) { EXPECT_TRUE(answer->bytes); };
    EXPECT_THAT(allEvents(), ElementsAre("a text text=Hello", "a done finish_reason=stop"));
}

TEST_F(ModelChannel, DropsWhatNobodyListensToAndGoesOn) {
    model(Script{}.says(1s, "1").says(1s, "2").says(1s, "3").says(1s, "4").ends(1s));
    respond("a");
    world.runFor(1500ms);
    EXPECT_EQ(stopListening(), "null");
    world.runFor(1s);
    EXPECT_EQ(listen(), "null");
    world.runFor(1s);
    EXPECT_EQ(listen(), "null"); // replaces the listener
    EXPECT_THAT(allEvents(),
                ElementsAre("a text text=1", "a text text=3", "a text text=4", "a done finish_reason=stop"));
}

TEST_F(ModelChannel, SaysThatNobodyHandlesACallOnceTheBridgeIsGone) {
    bridge.reset();
    EXPECT_EQ(call("availability"), "not implemented");
    EXPECT_EQ(respond("a"), "not implemented");
    EXPECT_EQ(listen(), "not implemented");
}
