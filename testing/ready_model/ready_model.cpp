#include "testing/ready_model/ready_model.h"

#include "platform/models/generation/background_executor.h"
#include "platform/models/generation/response_stream.h"
#include "platform/process_info.h"

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>

#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

using platform::Answer;

namespace {

using Strand = boost::asio::strand<boost::asio::thread_pool::executor_type>;

// An answer, and what keeps the pieces of work on it in order.
struct Told {
    std::shared_ptr<Answer> answer;
    Strand strand{platform::backgroundPool().get_executor()};
};

struct Waiting {
    std::mutex mutex;
    std::vector<Told> answers;
} waiting;

template <typename Work>
void forEach(const std::vector<Told>& answers, const Work& work) {
    for (const auto& [answer, strand] : answers)
        boost::asio::post(strand, [answer = answer, work] { work(*answer); });
}

} // namespace

std::size_t ready_model::waiting() {
    const std::lock_guard lock(::waiting.mutex);
    return ::waiting.answers.size();
}

void ready_model::tell(const std::string& text) {
    const std::lock_guard lock(::waiting.mutex);
    forEach(::waiting.answers, [text](Answer& answer) { answer.add(text); });
}

void ready_model::end() {
    const std::lock_guard lock(::waiting.mutex);
    forEach(std::exchange(::waiting.answers, {}), [](Answer& answer) { answer.end(std::nullopt); });
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
    const std::lock_guard lock(::waiting.mutex);
    ::waiting.answers.push_back({answer});
    return streamOf(std::move(answer));
}
// NOLINTEND(performance-unnecessary-value-param)

} // namespace platform
