// Sessions and streams: what a generation waits for, over whichever model answers.
#include "platform/language_model.h"

#include "platform/linux/answer.h"
#include "platform/linux/corrector_answer.h"
#include "platform/linux/model_choice.h"
#include "platform/linux/model_server_answer.h"

#include <functional>
#include <stop_token>

namespace platform {
namespace {

void start(const ModelChoice& model, const Prompt& prompt, const std::shared_ptr<Answer>& answer) {
    if (!answer->isWanted()) return;
    if (const auto* served = std::get_if<ServedModel>(&model))
        return answerFromServer(*served, prompt, answer);
    if (const auto* reason = std::get_if<SystemLanguageModel::UnavailableReason>(&model))
        return answer->fail(reason->description);
    answerFromCorrector(prompt.text, answer);
}

} // namespace

const SystemLanguageModel& SystemLanguageModel::defaultModel() {
    static const SystemLanguageModel model;
    return model;
}

SystemLanguageModel::Availability SystemLanguageModel::availability() const {
    auto choice = chooseModel();
    if (auto* reason = std::get_if<UnavailableReason>(&choice)) return std::move(*reason);
    return Available{};
}

class LanguageModelSession::Native {
public:
    explicit Native(std::string words) : instructions(std::move(words)) {}

    std::string instructions;
};

LanguageModelSession::LanguageModelSession(const SystemLanguageModel&, std::vector<Tool>,
                                           std::string instructions)
    : native_(std::make_unique<Native>(std::move(instructions))) {}
LanguageModelSession::~LanguageModelSession() = default;

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

ResponseStream LanguageModelSession::streamResponse(std::string prompt, const GenerationOptions& options) {
    auto answer = std::make_shared<Answer>();
    chooseModelForGeneration([answer, asked = Prompt{native_->instructions, std::move(prompt), options}](
                                 const ModelChoice& model) { start(model, asked, answer); });
    return ResponseStream(std::make_unique<ResponseStream::Native>(std::move(answer)));
}

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

} // namespace platform
