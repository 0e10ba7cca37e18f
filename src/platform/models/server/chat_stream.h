#pragma once

#include "platform/models/generation/answer.h"
#include "platform/models/http/exchange.h"
#include "platform/models/server/chat_completion.h"
#include "platform/models/server/server_sent_events.h"
#include "platform/models/server/thinking_filter.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// How long a server may be silent before it has failed.
struct SilenceLimits {
    // It may have others to answer first, and models think before they write.
    std::chrono::milliseconds beforeText = std::chrono::minutes(10);
    std::chrono::milliseconds inMidAnswer = std::chrono::seconds(60);
};

// Reads one streamed chat completion into an answer. One that has said how it ends is not waited for much
// longer.
class ChatStream : public HttpReceiver {
public:
    struct Outcomes {
        // The server takes the request.
        std::function<void()> accepted = {};
        // It does not, because of what the request holds (HTTP 400). True: the answer is asked for in another
        // way.
        std::function<bool()> rejected = {};
        // It cannot be reached, or has ended the connection in the middle of its answer.
        std::function<void()> lost = {};
    };

    // `server` is its address as a sentence names it.
    ChatStream(const std::string& server, const Prompt& prompt, const SilenceLimits& limits,
               Outcomes outcomes, std::shared_ptr<Answer> answer);

    std::chrono::milliseconds head(unsigned status) override;
    std::optional<std::chrono::milliseconds> body(std::string_view bytes) override;
    void finished(HttpEnd end, const std::string& reason) override;

private:
    using Clock = std::chrono::steady_clock;

    std::optional<std::chrono::milliseconds> timeLeft();
    std::nullopt_t over();
    bool readEvents();
    bool read(std::string_view event);
    bool readText(std::string_view output);
    void finish(std::string reason);
    void succeed();
    void refuse(const std::string& words);
    bool failWith(const ServerError& error);
    void failWith(HttpEnd end, const std::string& reason);
    void failAsStranger();
    bool fail(const std::string& what);

    std::string server_;
    std::int64_t limit_; // of tokens
    SilenceLimits limits_;
    Outcomes outcomes_;
    std::shared_ptr<Answer> answer_;
    ThinkingFilter thinking_;
    ServerSentEvents events_;
    unsigned status_ = 0;
    std::size_t received_ = 0, written_ = 0;    // bytes of the body, and of the answer
    std::optional<Clock::time_point> deadline_; // whatever comes until then
    std::string errorBody_;
    bool answering_ = false; // an event has come
    bool begun_ = false;     // so has text, or thinking
    std::optional<std::string> finishReason_;
    std::optional<std::int64_t> tokens_;
    std::string refusal_;
};

} // namespace platform
