#include "support/ready_model.h"

#include "platform/language_model.h"
#include "platform/linux/background_executor.h"
#include "platform/process_info.h"

#include <mutex>

namespace {

struct Gate {
    std::mutex mutex;
    bool holding = false;
    std::vector<platform::Task::Suspended> tasks;
} gate;

int snapshotCount = 20;
std::string snapshotText;

} // namespace

void ready_model::answer(int snapshots, std::string text) {
    snapshotCount = snapshots;
    snapshotText = std::move(text);
}

void ready_model::hold() {
    const std::lock_guard lock(gate.mutex);
    gate.holding = true;
}

std::size_t ready_model::held() {
    const std::lock_guard lock(gate.mutex);
    return gate.tasks.size();
}

void ready_model::release() {
    std::vector<platform::Task::Suspended> tasks;
    {
        const std::lock_guard lock(gate.mutex);
        gate.holding = false;
        tasks.swap(gate.tasks);
    }
    for (const auto task : tasks)
        platform::resumeInBackground(task);
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

class ResponseStream::Native {
public:
    void wait(Task::Suspended task) {
        const std::lock_guard lock(gate.mutex);
        if (gate.holding && count == 0) {
            gate.tasks.push_back(task);
        } else {
            resumeInBackground(task);
        }
    }
    int count = 0;
};

ResponseStream LanguageModelSession::streamResponse(std::string, const GenerationOptions&) {
    return ResponseStream(std::make_unique<ResponseStream::Native>());
}
// NOLINTEND(performance-unnecessary-value-param)
ResponseStream::ResponseStream(std::unique_ptr<Native> native) : native_(std::move(native)) {}
ResponseStream::~ResponseStream() = default;
ResponseStream::ResponseStream(ResponseStream&&) noexcept = default;
ResponseStream& ResponseStream::operator=(ResponseStream&&) noexcept = default;

ResponseStream::Next ResponseStream::next() { return Next(*native_); }
bool ResponseStream::Next::await_ready() { return false; }
void ResponseStream::Next::await_suspend(Task::Suspended task) { stream_.wait(task); }
std::optional<ResponseStream::Snapshot> ResponseStream::Next::await_resume() {
    if (stream_.count == snapshotCount) return std::nullopt;
    return Snapshot{std::to_string(++stream_.count) + snapshotText};
}

ResponseStream::Collect ResponseStream::collect() { return Collect(*native_); }
bool ResponseStream::Collect::await_ready() { return false; }
void ResponseStream::Collect::await_suspend(Task::Suspended task) { stream_.wait(task); }
Response ResponseStream::Collect::await_resume() { return {}; }

} // namespace platform
