#include "platform/models/generation/response_stream.h"

#include "platform/main_queue.h"
#include "platform/outgoing_messages.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <stop_token>
#include <utility>

namespace platform {
namespace {

// How long to wait before the next snapshot. Each one holds the whole text so far, so that a long text which
// grows fast is copied again and again: a screen shows no more than 60 a second, and of a very long text even
// 60 would keep the main thread busy.
Seconds pauseAfter(std::size_t snapshotBytes) {
    constexpr std::size_t longBytes = 16 << 10;
    constexpr Seconds frame{1.0 / 60};
    constexpr double mostBytesPerSecond = 16 << 20;
    if (snapshotBytes < longBytes) return Seconds{};
    return std::max(frame, Seconds(static_cast<double>(snapshotBytes) / mostBytesPerSecond));
}

} // namespace

class ResponseStream::Native {
public:
    explicit Native(std::shared_ptr<Answer> answer) : answer_(std::move(answer)) {}
    ~Native() { answer_->cancel(); }
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    // Once the interface has taken the last snapshot, which is on its way through the main queue.
    void askForTurn() {
        if (!last_) return;
        auto ask = [answer = answer_] { OutgoingMessages::whenTaken([answer] { answer->giveTurn(); }); };
        const auto pause = pauseAfter(*std::exchange(last_, std::nullopt));
        if (pause > Seconds{}) return MainQueue::asyncAfter(pause, std::move(ask));
        ask();
    }

    bool isReady(Answer::Until until) const { return answer_->isReady(until); }

    // The task may go on elsewhere, and end this, before wait() is back: the answer must outlast that.
    void wait(Answer::Until until, Task::Suspended task) {
        const auto answer = answer_;
        onCancel_.emplace(task.promise().cancellation(), [answer] { answer->cancel(); });
        answer->wait(until, task);
    }

    std::optional<Snapshot> next() {
        onCancel_.reset();
        auto text = answer_->take();
        if (!text) return std::nullopt;
        last_ = text->size();
        return Snapshot{std::move(*text)};
    }

    Response response() {
        onCancel_.reset();
        Response response{answer_->text(), {}};
        if (const auto tokens = answer_->tokens())
            response.mirror.children.push_back({"responseTokenCount", *tokens});
        return response;
    }

private:
    std::shared_ptr<Answer> answer_;
    std::optional<std::size_t>
        last_; // bytes of the last snapshot, until the turn after it has been asked for
    std::optional<std::stop_callback<std::function<void()>>> onCancel_;
};

ResponseStream::ResponseStream(std::unique_ptr<Native> native) : native_(std::move(native)) {}
ResponseStream::~ResponseStream() = default;
ResponseStream::ResponseStream(ResponseStream&&) noexcept = default;
ResponseStream& ResponseStream::operator=(ResponseStream&&) noexcept = default;

ResponseStream::Next ResponseStream::next() {
    native_->askForTurn();
    return Next(*native_);
}
bool ResponseStream::Next::await_ready() { return stream_.isReady(Answer::Until::newText); }
void ResponseStream::Next::await_suspend(Task::Suspended task) { stream_.wait(Answer::Until::newText, task); }
std::optional<ResponseStream::Snapshot> ResponseStream::Next::await_resume() { return stream_.next(); }

ResponseStream::Collect ResponseStream::collect() { return Collect(*native_); }
bool ResponseStream::Collect::await_ready() { return stream_.isReady(Answer::Until::end); }
void ResponseStream::Collect::await_suspend(Task::Suspended task) { stream_.wait(Answer::Until::end, task); }
Response ResponseStream::Collect::await_resume() { return stream_.response(); }

ResponseStream streamOf(std::shared_ptr<Answer> answer) {
    return ResponseStream(std::make_unique<ResponseStream::Native>(std::move(answer)));
}

} // namespace platform
