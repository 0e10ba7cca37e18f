// A stream that follows its script.
#include "platform/simulated/language_model.h"
#include "platform/simulated/task.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace platform {

class ResponseStream::Native {
public:
    explicit Native(simulated::Script script) : script_(std::move(script)) {}

    void wait(Task::Suspended task) {
        const bool ending = next_ == script_.steps.size();
        waiting_ = simulated::resumeAfter(ending ? script_.end : script_.steps[next_].after, task);
        cancelled_ = false;
        if (script_.onCancel != simulated::OnCancel::ignore)
            onCancel_.emplace(task.promise().cancellation(), [this] { cancel(); });
    }

    std::optional<Snapshot> snapshot() {
        onCancel_.reset();
        if (cancelled_ && script_.onCancel == simulated::OnCancel::fail) throw CancellationError();
        if (cancelled_) return std::nullopt;
        if (next_ < script_.steps.size()) return Snapshot{script_.steps[next_++].content};
        if (script_.failure) std::rethrow_exception(script_.failure);
        return std::nullopt;
    }

    void waitForEnd(Task::Suspended task) { simulated::resumeAfter(script_.collect, task); }

    Response response() const {
        if (const auto* failure = std::get_if<std::exception_ptr>(&script_.response))
            std::rethrow_exception(*failure);
        return {next_ == 0 ? "" : script_.steps[next_ - 1].content, std::get<Mirror>(script_.response)};
    }

private:
    void cancel() {
        const auto waiting = waiting_.lock();
        const auto task = waiting ? waiting->take() : nullptr;
        if (!task) return;
        cancelled_ = true;
        simulated::resumeAfter({}, task);
    }

    simulated::Script script_;
    std::size_t next_ = 0;
    bool cancelled_ = false;
    std::weak_ptr<simulated::WaitingTask> waiting_;
    std::optional<std::stop_callback<std::function<void()>>> onCancel_;
};

ResponseStream::ResponseStream(std::unique_ptr<Native> native) : native_(std::move(native)) {}
ResponseStream::~ResponseStream() = default;
ResponseStream::ResponseStream(ResponseStream&&) noexcept = default;
ResponseStream& ResponseStream::operator=(ResponseStream&&) noexcept = default;

ResponseStream::Next ResponseStream::next() { return Next(*native_); }
bool ResponseStream::Next::await_ready() { return false; }
void ResponseStream::Next::await_suspend(Task::Suspended task) { stream_.wait(task); }
std::optional<ResponseStream::Snapshot> ResponseStream::Next::await_resume() { return stream_.snapshot(); }

ResponseStream::Collect ResponseStream::collect() { return Collect(*native_); }
bool ResponseStream::Collect::await_ready() { return false; }
void ResponseStream::Collect::await_suspend(Task::Suspended task) { stream_.waitForEnd(task); }
Response ResponseStream::Collect::await_resume() { return stream_.response(); }

} // namespace platform

namespace simulated {

platform::ResponseStream startStream(Script script) {
    return platform::ResponseStream(std::make_unique<platform::ResponseStream::Native>(std::move(script)));
}

} // namespace simulated
