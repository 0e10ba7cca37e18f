#include "flutter/frame.h"
#include "flutter/frame_messenger.h"
#include "flutter/hex.h"

#include <gmock/gmock.h>

using namespace flutter;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// A messenger whose peer is the test.
struct FrameMessengerTest : testing::Test {
    FrameMessengerTest()
        : messenger(std::make_unique<FrameMessenger>([this](Bytes bytes) {
              FrameReader reader;
              reader.feed(bytes);
              written.push_back(reader.next().value());
          })) {}

    std::optional<std::string> arrive(const std::vector<Frame>& frames) {
        Bytes bytes;
        for (const auto& frame : frames)
            bytes = std::move(bytes) + *encodeFrame(frame);
        return messenger->receive(bytes);
    }

    static Frame request(std::uint32_t id, std::string channel, Bytes payload = {}) {
        return {FrameKind::request, id, std::move(channel), std::move(payload)};
    }
    static Frame message(std::string channel, Bytes payload = {}) {
        return {FrameKind::message, 0, std::move(channel), std::move(payload)};
    }
    static Frame reply(std::uint32_t id, Bytes payload = {}) {
        return {FrameKind::reply, id, "", std::move(payload)};
    }

    std::vector<Frame> written;
    std::unique_ptr<FrameMessenger> messenger;
};

TEST_F(FrameMessengerTest, AnswersEveryRequestOnceUnderItsOwnId) {
    std::vector<BinaryMessenger::Reply> kept;
    messenger->setMessageHandler("echo", [](auto bytes, const auto& answer) {
        answer(Bytes(bytes.begin(), bytes.end()));
        answer({9});
    });
    messenger->setMessageHandler("later", [&](auto, auto answer) { kept.push_back(answer); });

    EXPECT_EQ(
        arrive({request(5, "later"), request(5, "echo", {1, 2}), message("echo"), request(0, "nobody")}),
        std::nullopt);
    EXPECT_THAT(written, ElementsAre(reply(5, {1, 2}), reply(0)));
    kept.at(0)({3});
    EXPECT_EQ(written.back(), reply(5, {3}));

    messenger->setMessageHandler("echo", nullptr);
    EXPECT_EQ(arrive({request(6, "echo", {1})}), std::nullopt);
    EXPECT_EQ(written.back(), reply(6));
}

TEST_F(FrameMessengerTest, GivesEachReplyToTheMessageThatAskedForIt) {
    std::vector<Bytes> first, second;
    messenger->send("a", Bytes{1}, [&](Bytes bytes) { first.push_back(bytes); });
    messenger->send("b", Bytes{2}, [&](Bytes bytes) { second.push_back(bytes); });
    messenger->send("c", Bytes{3});
    ASSERT_EQ(written.size(), 3U);
    EXPECT_EQ(written[2], message("c", {3}));
    ASSERT_NE(written[0].id, written[1].id);

    EXPECT_EQ(arrive({reply(written[1].id, {20}), reply(written[0].id, {10})}), std::nullopt);
    EXPECT_THAT(first, ElementsAre(Bytes{10}));
    EXPECT_THAT(second, ElementsAre(Bytes{20}));
    EXPECT_THAT(arrive({reply(written[0].id, {10})}).value_or(""), HasSubstr("A reply carries id"));
}

TEST_F(FrameMessengerTest, HandlesNothingAfterTheRulesWereBroken) {
    int handled = 0;
    messenger->setMessageHandler("c", [&](auto, const auto&) { ++handled; });
    EXPECT_THAT(arrive({message("c"), reply(77), message("c")}).value_or(""), HasSubstr("id 77"));
    EXPECT_NE(arrive({message("c")}), std::nullopt);
    EXPECT_EQ(handled, 1);
    EXPECT_NE(FrameMessenger([](const Bytes&) {}).receive(hex("05000000 09 00000000")), std::nullopt);
}

TEST_F(FrameMessengerTest, HandlesMessagesOneAtATimeInOrderThoughAHandlerReadsOn) {
    std::vector<std::string> log;
    messenger->setMessageHandler("outer", [&](auto, const auto&) {
        log.emplace_back("outer begins");
        EXPECT_EQ(arrive({message("inner")}), std::nullopt);
        messenger->setMessageHandler("outer", nullptr);
        log.emplace_back("outer ends");
    });
    messenger->setMessageHandler("inner", [&](auto, const auto&) { log.emplace_back("inner"); });
    messenger->send("ask", {}, [&](const Bytes&) { log.emplace_back("reply"); });

    EXPECT_EQ(arrive({message("outer"), reply(written[0].id), message("outer")}), std::nullopt);
    EXPECT_THAT(log, ElementsAre("outer begins", "outer ends", "reply", "inner"));
}

TEST_F(FrameMessengerTest, MayEndInsideAHandlerAndBeforeAReply) {
    BinaryMessenger::Reply kept;
    messenger->setMessageHandler("end", [&](auto, auto answer) {
        kept = answer;
        messenger.reset();
        answer({2});
    });
    auto* const alive = messenger.get();
    EXPECT_EQ(alive->receive(*encodeFrame(request(1, "end")) + *encodeFrame(request(2, "nobody"))),
              std::nullopt);
    kept({1});
    EXPECT_THAT(written, ElementsAre());
}

TEST_F(FrameMessengerTest, AnswersWithNothingWhatIsTooLongToSend) {
    std::optional<Bytes> answer;
    messenger->send("c", Bytes(maxFrameLength), [&](Bytes bytes) { answer = std::move(bytes); });
    EXPECT_EQ(answer, Bytes{});
    messenger->setMessageHandler("big", [](auto, const auto& reply) { reply(Bytes(maxFrameLength)); });
    EXPECT_EQ(arrive({request(3, "big")}), std::nullopt);
    EXPECT_THAT(written, ElementsAre(reply(3)));
    EXPECT_NE(arrive({reply(1)}), std::nullopt) << "the message was never sent";
}

} // namespace
