#include "platform/models/server/ask_server.h"

#include "platform/models/http/exchange.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace platform {
namespace {

struct Attempt {
    std::string model;
    ThinkingSwitch off = ThinkingSwitch::none;
};

// Some versions of a server's program reject the switch, so each model is asked without it too.
std::vector<Attempt> attemptsFor(const ServedModel& served) {
    constexpr std::size_t mostModels = 4;
    const auto off = served.server.thinking ? ThinkingSwitch::none : served.thinkingSwitch;
    std::vector<Attempt> attempts;
    const auto add = [&](const std::string& model) {
        if (off != ThinkingSwitch::none) attempts.push_back({model, off});
        attempts.push_back({model});
    };
    if (served.models.empty()) add("");
    for (std::size_t i = 0; i < std::min(served.models.size(), mostModels); ++i)
        add(served.models[i]);
    return attempts;
}

// One question, asked of one model after the other. The exchange that is under way keeps it alive.
class Request : public std::enable_shared_from_this<Request> {
public:
    Request(const ServedModel& served, Prompt prompt, std::shared_ptr<Answer> answer, ServerNews news,
            const SilenceLimits& limits)
        : server_(served.server), prompt_(std::move(prompt)), answer_(std::move(answer)),
          news_(std::move(news)), limits_(limits), attempts_(attemptsFor(served)) {}

    // False when nothing is left to try.
    bool tryNext() {
        if (next_ == attempts_.size()) return false;
        const auto& attempt = attempts_[next_++];
        HttpRequest request{
            .url = server_.address.url() + "/chat/completions",
            .body = completionRequest(attempt.model, prompt_, attempt.off),
            .bearer = server_.key,
            .headLimit = limits_.beforeText,
        };
        ChatStream::Outcomes outcomes{.accepted = [self = shared_from_this()] { self->accepted(); },
                                      .rejected = [self = shared_from_this()] { return self->tryNext(); },
                                      .lost = news_.lost};
        auto stream = std::make_shared<ChatStream>(server_.address.shown(), prompt_, limits_,
                                                   std::move(outcomes), answer_);
        answer_->whenUnwanted(startHttpExchange(std::move(request), std::move(stream)));
        return true;
    }

private:
    void accepted() {
        const auto& model = attempts_[next_ - 1].model;
        for (const auto& attempt : attempts_) {
            if (attempt.model == model) return;
            if (news_.cannotAnswer) news_.cannotAnswer(attempt.model);
        }
    }

    ModelServer server_;
    Prompt prompt_;
    std::shared_ptr<Answer> answer_;
    ServerNews news_;
    SilenceLimits limits_;
    std::vector<Attempt> attempts_;
    std::size_t next_ = 0;
};

} // namespace

void askServer(const ServedModel& served, const Prompt& prompt, std::shared_ptr<Answer> answer,
               ServerNews news, const SilenceLimits& limits) {
    std::make_shared<Request>(served, prompt, std::move(answer), std::move(news), limits)->tryNext();
}

} // namespace platform
