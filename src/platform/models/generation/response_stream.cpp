#include "platform/models/generation/response_stream.h"

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>

namespace platform {

class ResponseStream::Native {
public:
    explicit Native(std::shared_ptr<Answer> answer) : answer_(std::move(answer)) {}
    ~Native() { answer_->cancel(); }
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    bool isReady(Answer::Until until) const { return answer_->isReady(until); }

    // The task may go on elsewhere, and end this, before wait() is back: the answer must outlast that.
    void wait(Answer::Until until, Task::Suspended task) {
        const auto answer = answer_;
        onCancel_.emplace(task.promise().cancellation(), [answer] { answer->cancel(); });
        answer->wait(until, task);
    }

    std::optional<Snapshot> next() {
        onCancel_.reset();
        const auto piece = answer_->take();
        if (!piece) return std::nullopt;
        text_ += *piece;
        return Snapshot{text_};
    }

    Response response() {
        onCancel_.reset();
        while (const auto piece = answer_->take())
            text_ += *piece;
        Response response{std::move(text_), {}};
        if (const auto tokens = answer_->tokens())
            response.mirror.children.push_back({"responseTokenCount", *tokens});
        return response;
    }

private:
    std::shared_ptr<Answer> answer_;
    std::string text_;
    std::optional<std::stop_callback<std::function<void()>>> onCancel_;
};

ResponseStream::ResponseStream(std::unique_ptr<Native> native) : native_(std::move(native)) {}
ResponseStream::~ResponseStream() = default;
ResponseStream::ResponseStream(ResponseStream&&) noexcept = default;
ResponseStream& ResponseStream::operator=(ResponseStream&&) noexcept = default;

ResponseStream::Next ResponseStream::next() { return Next(*native_); }
bool ResponseStream::Next::await_ready() { return stream_.isReady(Answer::Until::nextPiece); }
void ResponseStream::Next::await_suspend(Task::Suspended task) {
    stream_.wait(Answer::Until::nextPiece, task);
}
std::optional<ResponseStream::Snapshot> ResponseStream::Next::await_resume() { return stream_.next(); }

ResponseStream::Collect ResponseStream::collect() { return Collect(*native_); }
bool ResponseStream::Collect::await_ready() { return stream_.isReady(Answer::Until::end); }
void ResponseStream::Collect::await_suspend(Task::Suspended task) { stream_.wait(Answer::Until::end, task); }
Response ResponseStream::Collect::await_resume() { return stream_.response(); }

ResponseStream streamOf(std::shared_ptr<Answer> answer) {
    return ResponseStream(std::make_unique<ResponseStream::Native>(std::move(answer)));
}

} // namespace platform
