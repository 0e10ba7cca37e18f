#include "testing/ready_model/ready_model.h"

#include "platform/models/generation/background_executor.h"
#include "platform/models/generation/response_stream.h"
#include "platform/process_info.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <mutex>

using platform::Answer;

namespace {

struct Gate {
    std::mutex mutex;
    bool holding = false;
    std::vector<std::shared_ptr<Answer>> answers;
} gate;

std::size_t snapshotCount = 20;
std::string firstSnapshot;

// One piece, then another answer's turn.
void tell(std::shared_ptr<Answer> answer, std::size_t told) {
    boost::asio::post(platform::backgroundPool(), [answer = std::move(answer), told]() mutable {
        if (told == snapshotCount) return answer->end(std::nullopt);
        answer->add(told == 0 ? firstSnapshot : "x");
        tell(std::move(answer), told + 1);
    });
}

} // namespace

void ready_model::answer(std::size_t snapshots, std::string text) {
    snapshotCount = snapshots;
    firstSnapshot = std::move(text);
}

void ready_model::hold() {
    const std::lock_guard lock(gate.mutex);
    gate.holding = true;
}

std::size_t ready_model::held() {
    const std::lock_guard lock(gate.mutex);
    return gate.answers.size();
}

void ready_model::release() {
    std::vector<std::shared_ptr<Answer>> answers;
    {
        const std::lock_guard lock(gate.mutex);
        gate.holding = false;
        answers.swap(gate.answers);
    }
    for (auto& answer : answers)
        tell(std::move(answer), 0);
}

namespace platform {

const ProcessInfo& ProcessInfo::processInfo() {
    static const ProcessInfo info;
    return info;
}
bool ProcessInfo::isOperatingSystemAtLeast(OperatingSystemVersion) const { return true; }
std::string ProcessInfo::operatingSystemVersionString() const { return "test"; }

const SystemLanguageModel& SystemLanguageModel::defaultModel() {
    static const SystemLanguageModel model;
    return model;
}
SystemLanguageModel::Availability SystemLanguageModel::availability() const { return Available{}; }

// NOLINTBEGIN(performance-unnecessary-value-param): the seam's own signatures
class LanguageModelSession::Native {};
LanguageModelSession::LanguageModelSession(const SystemLanguageModel&, std::vector<Tool>, std::string) {}
LanguageModelSession::~LanguageModelSession() = default;

ResponseStream LanguageModelSession::streamResponse(std::string, const GenerationOptions&) {
    auto answer = std::make_shared<Answer>();
    const std::lock_guard lock(gate.mutex);
    if (gate.holding) {
        gate.answers.push_back(answer);
    } else {
        tell(answer, 0);
    }
    return streamOf(std::move(answer));
}
// NOLINTEND(performance-unnecessary-value-param)

} // namespace platform
