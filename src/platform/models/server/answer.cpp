#include "platform/models/server/answer.h"

#include "platform/models/server/chat_completion.h"
#include "platform/models/server/http_exchange.h"
#include "platform/models/server/server_sent_events.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace platform {
namespace {

constexpr unsigned ok = 200;

// Text Generation Inference says "eos_token" or "stop_sequence" where others say "stop".
constexpr std::array<std::string_view, 4> ownEnds{"stop", "eos", "eos_token", "stop_sequence"};
constexpr auto cutOff = "length", filtered = "content_filter";

// Whether the answer is whole as far as it goes. Any other reason means that it is not: "abort" and "error"
// are vLLM's for an answer that it dropped, "tool_calls" is a question to a program that is not there, and
// "load" is Ollama's for no answer at all. Without a reason the answer has been closed in due form.
bool isWhole(const std::optional<std::string>& reason) {
    return !reason || reason == cutOff || std::ranges::find(ownEnds, *reason) != ownEnds.end();
}

class ServerAnswer : public HttpReceiver {
public:
    ServerAnswer(std::string address, std::int64_t limit, const SilenceLimits& limits,
                 std::shared_ptr<Answer> answer)
        : server_("The model server at " + std::move(address)), limit_(limit), limits_(limits),
          answer_(std::move(answer)) {}

    // Some servers send the head long before the answer.
    std::chrono::milliseconds head(unsigned status) override {
        status_ = status;
        if (status_ == ok) return limits_.beforeText;
        deadline_ = Clock::now() + limits_.inMidAnswer;
        return limits_.inMidAnswer;
    }

    std::optional<std::chrono::milliseconds> body(std::string_view bytes) override {
        received_ += bytes.size();
        if (status_ != ok) {
            constexpr std::size_t longestWords = 1 << 16;
            refusedBody_ += bytes;
            return received_ < longestWords ? timeLeft() : over();
        }
        events_.feed(bytes);
        if (!readEvents()) return std::nullopt;
        if (events_.isTooLong()) {
            fail(" sent a line without an end. Try again, or choose another model server.");
            return std::nullopt;
        }
        if (!answering_ && received_ > ServerSentEvents::longestEvent) {
            failAsStranger();
            return std::nullopt;
        }
        return timeLeft();
    }

    void finished(HttpEnd end, const std::string& reason) override {
        if (end == HttpEnd::unreachable)
            return void(fail(" cannot be reached (" + reason + "). Start it, then try again."));
        if (status_ != 0 && status_ != ok) return void(fail(words(readErrorMessage(refusedBody_), status_)));
        events_.finish();
        if (!readEvents()) return;
        if (finishReason_) return succeed();
        if (end == HttpEnd::complete && !answering_) return failAsStranger();
        if (end == HttpEnd::silent && !begun_)
            return void(fail(" did not answer in time. Try again when it has finished its other work; if it "
                             "happens again, restart the server."));
        if (end == HttpEnd::silent)
            return void(fail(
                " stopped in the middle of its answer. Try again; if it happens again, restart the server."));
        fail(" ended before its answer was complete. Try again; if it happens again, look at the server's "
             "messages.");
    }

private:
    using Clock = std::chrono::steady_clock;

    std::optional<std::chrono::milliseconds> timeLeft() {
        if (!deadline_) return begun_ ? limits_.inMidAnswer : limits_.beforeText;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Clock::now());
        return left.count() > 0 ? std::optional(left) : over();
    }

    // Though more may come.
    std::nullopt_t over() {
        finished(HttpEnd::silent, {});
        return std::nullopt;
    }

    // False once the answer is over.
    bool readEvents() {
        while (const auto event = events_.next())
            if (!read(*event)) return false;
        return true;
    }

    bool read(std::string_view event) {
        answering_ = true;
        if (event == "[DONE]") {
            succeed();
            return false;
        }
        auto chunk = readCompletionChunk(event);
        if (!chunk)
            return fail(" sent something that cannot be read. Try again, or choose another model server.");
        if (chunk->error) return fail(words(*chunk->error, 0));
        if (chunk->finishReason) finish(std::move(*chunk->finishReason));
        begun_ = begun_ || chunk->thinking || !chunk->text.empty() || !chunk->refusal.empty();
        if (chunk->tokens) tokens_ = chunk->tokens;
        refusal_ += chunk->refusal;
        if (!chunk->text.empty()) answer_->add(chunk->text);
        return true;
    }

    // The count of tokens may still come, if the server counts at all.
    void finish(std::string reason) {
        constexpr std::chrono::milliseconds afterwordLimit(500);
        if (!finishReason_) deadline_ = Clock::now() + afterwordLimit;
        finishReason_ = std::move(reason);
    }

    void succeed() {
        if (!refusal_.empty() || finishReason_ == filtered) {
            answer_->refuse("The model would not answer (refusal)" +
                            (refusal_.empty() ? "." : ": " + refusal_));
            return;
        }
        if (!isWhole(finishReason_))
            return void(fail(" gave up in the middle of its answer (" + *finishReason_ +
                             "). Try again, or look at its messages."));
        // A full context cuts an answer off too, and not every server counts.
        if (finishReason_ == cutOff) tokens_ = limit_;
        answer_->end(tokens_);
    }

    void failAsStranger() {
        fail(" answered with something that is not a model's answer. Correct its address, or choose another "
             "model server.");
    }

    static std::string words(const std::string& own, unsigned status) {
        const std::string number = status == 0 ? "" : " (HTTP " + std::to_string(status) + ")";
        return " could not answer" + number + (own.empty() ? "." : ": " + own + ".") +
               " Try again, or look at the server's messages.";
    }

    bool fail(const std::string& what) {
        answer_->fail(server_ + what);
        return false;
    }

    std::string server_;
    std::int64_t limit_;
    SilenceLimits limits_;
    std::shared_ptr<Answer> answer_;
    unsigned status_ = 0;
    std::size_t received_ = 0;
    std::optional<Clock::time_point> deadline_; // whatever comes until then
    std::string refusedBody_;
    bool answering_ = false; // an event has come
    bool begun_ = false;     // so has text, or thinking
    ServerSentEvents events_;
    std::optional<std::string> finishReason_;
    std::optional<std::int64_t> tokens_;
    std::string refusal_;
};

} // namespace

void answerFromServer(const ServedModel& model, const Prompt& prompt, std::shared_ptr<Answer> answer,
                      const SilenceLimits& limits) {
    HttpRequest request{
        .host = model.server.host,
        .port = model.server.port,
        .target = model.server.path + "/chat/completions",
        .body = completionRequest(model.model, prompt.instructions, prompt.text, prompt.options),
        .bearer = model.server.key,
        .headLimit = limits.beforeText,
    };
    auto receiver = std::make_shared<ServerAnswer>(model.server.address(),
                                                   prompt.options.maximumResponseTokens, limits, answer);
    answer->whenUnwanted(startHttpExchange(std::move(request), std::move(receiver)));
}

} // namespace platform
