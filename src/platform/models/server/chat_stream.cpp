#include "platform/models/server/chat_stream.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform {
namespace {

constexpr unsigned ok = 200, badRequest = 400;

// Text Generation Inference says "eos_token" or "stop_sequence" where others say "stop". Any reason but these
// and "length" means that the answer is not whole: "abort" and "error" are vLLM's for one that it dropped,
// "tool_calls" is a question to a program that is not there, and "load" is Ollama's for no answer at all. An
// answer without a reason is whole when "[DONE]" ends it.
constexpr std::array<std::string_view, 4> ownEnds{"stop", "eos", "eos_token", "stop_sequence"};
constexpr auto cutOff = "length", filtered = "content_filter";

bool isOwnEnd(std::string_view reason) { return std::ranges::find(ownEnds, reason) != ownEnds.end(); }

// llama-server, vLLM and others: "… exceeds the available context size". Another model would say the same.
bool isTooLong(std::string_view words) { return words.find("context") != std::string_view::npos; }

std::string wordsFor(const std::string& own, unsigned status) {
    const std::string number = status == ok ? "" : " (HTTP " + std::to_string(status) + ")";
    return " could not answer" + number + (own.empty() ? "." : ": " + own + ".") +
           " Try again, or look at the server's messages.";
}

} // namespace

ChatStream::ChatStream(const std::string& server, const Prompt& prompt, const SilenceLimits& limits,
                       Outcomes outcomes, std::shared_ptr<Answer> answer)
    : server_("The model server at " + server), limit_(prompt.options.maximumResponseTokens), limits_(limits),
      outcomes_(std::move(outcomes)), answer_(std::move(answer)), thinking_(prompt.text) {}

// Some servers send the head long before the answer.
std::chrono::milliseconds ChatStream::head(unsigned status) {
    status_ = status;
    if (status_ == ok) {
        if (outcomes_.accepted) outcomes_.accepted();
        return limits_.beforeText;
    }
    deadline_ = Clock::now() + limits_.inMidAnswer;
    return limits_.inMidAnswer;
}

std::optional<std::chrono::milliseconds> ChatStream::body(std::string_view bytes) {
    received_ += bytes.size();
    if (status_ != ok) {
        constexpr std::size_t mostErrorBytes = 1 << 16;
        errorBody_ += bytes;
        return received_ < mostErrorBytes ? timeLeft() : over();
    }
    events_.feed(bytes);
    if (!readEvents()) return std::nullopt;
    if (events_.isTooLong()) {
        fail(" sent a line without an end. Try again, or choose another model server.");
        return std::nullopt;
    }
    if (!answering_ && received_ > ServerSentEvents::mostEventBytes) {
        failAsStranger();
        return std::nullopt;
    }
    return timeLeft();
}

void ChatStream::finished(HttpEnd end, const std::string& reason) {
    const auto error = readError(errorBody_);
    const bool isOfModel = status_ == badRequest && !error.isRefusal && !isTooLong(error.words);
    if (isOfModel && outcomes_.rejected && outcomes_.rejected()) return;
    if (status_ == ok) {
        events_.finish();
        if (!readEvents()) return;
        if (finishReason_) return succeed();
    }
    const bool isCutOff = status_ == ok && end == HttpEnd::complete;
    const bool isLost =
        end == HttpEnd::unreachable || end == HttpEnd::unanswered || end == HttpEnd::broken || isCutOff;
    if (isLost && outcomes_.lost) outcomes_.lost();
    failWith(end, reason);
}

void ChatStream::failWith(HttpEnd end, const std::string& reason) {
    if (end == HttpEnd::unreachable || end == HttpEnd::unanswered) {
        fail(" cannot be reached (" + reason + "). Start it, then try again.");
    } else if (end == HttpEnd::untrusted) {
        fail(" could not prove that it is that server (" + reason +
             "). Nothing was sent. Correct its address, or its certificate.");
    } else if (status_ != 0 && status_ != ok) {
        failWith(readError(errorBody_));
    } else if (end == HttpEnd::complete && !answering_) {
        failAsStranger();
    } else if (end == HttpEnd::silent && !begun_) {
        fail(" did not answer in time. Try again when it has finished its other work; if it happens again, "
             "restart "
             "the server.");
    } else if (end == HttpEnd::silent) {
        fail(" stopped in the middle of its answer. Try again; if it happens again, restart the server.");
    } else {
        fail(" ended before its answer was complete. Try again; if it happens again, look at the server's "
             "messages.");
    }
}

std::optional<std::chrono::milliseconds> ChatStream::timeLeft() {
    if (!deadline_) return begun_ ? limits_.inMidAnswer : limits_.beforeText;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Clock::now());
    return left.count() > 0 ? std::optional(left) : over();
}

// Ends the answer, though the server may send more.
std::nullopt_t ChatStream::over() {
    finished(HttpEnd::silent, {});
    return std::nullopt;
}

// False once the answer is over.
bool ChatStream::readEvents() {
    while (const auto event = events_.next())
        if (!read(*event)) return false;
    return true;
}

bool ChatStream::read(std::string_view event) {
    answering_ = true;
    if (event == "[DONE]") {
        succeed();
        return false;
    }
    auto chunk = readCompletionChunk(event);
    if (!chunk)
        return fail(" sent something that cannot be read. Try again, or choose another model server.");
    if (chunk->error) return failWith(*chunk->error);
    if (chunk->finishReason) finish(std::move(*chunk->finishReason));
    begun_ = begun_ || chunk->thinking || !chunk->text.empty() || !chunk->refusal.empty();
    if (chunk->tokens) tokens_ = chunk->tokens;
    refusal_ += chunk->refusal;
    return chunk->text.empty() || readText(chunk->text);
}

bool ChatStream::readText(std::string_view output) {
    constexpr std::size_t mostAnswerBytes = 16 << 20; // a snapshot of four times as many fits in no message
    const auto piece = thinking_.add(output);
    if (piece.startsOver) answer_->startOver();
    if (!piece.text.empty()) answer_->add(piece.text);
    written_ += piece.text.size();
    if (written_ <= mostAnswerBytes) return true;
    return fail(" did not stop writing. Try again with a shorter text, or choose another model.");
}

// The count of tokens may still come, if the server counts at all.
void ChatStream::finish(std::string reason) {
    constexpr std::chrono::milliseconds afterwordLimit(500);
    if (!finishReason_) deadline_ = Clock::now() + afterwordLimit;
    finishReason_ = std::move(reason);
}

void ChatStream::succeed() {
    if (!refusal_.empty() || finishReason_ == filtered) return refuse(refusal_);
    const bool isCutOff = finishReason_ == cutOff, isWhole = finishReason_ && isOwnEnd(*finishReason_);
    if (finishReason_ && !isCutOff && !isWhole) {
        fail(" gave up in the middle of its answer (" + *finishReason_ +
             "). Try again, or look at its messages.");
        return;
    }
    if (const auto rest = thinking_.finish(); !rest.empty()) answer_->add(rest);
    // A full context cuts an answer off too, and not every server counts.
    if (isCutOff) tokens_ = limit_;
    // The server's word counts, also when the answer is exactly as long as it may be.
    if (isWhole && tokens_ == limit_) tokens_.reset();
    answer_->end(tokens_);
}

void ChatStream::refuse(const std::string& words) {
    answer_->refuse("The model would not answer (refusal)" + (words.empty() ? "." : ": " + words));
}

bool ChatStream::failWith(const ServerError& error) {
    if (!error.isRefusal) return fail(wordsFor(error.words, status_));
    refuse(error.words);
    return false;
}

void ChatStream::failAsStranger() {
    fail(" answered with something that is not a model's answer. Correct its address, or choose another "
         "model server.");
}

bool ChatStream::fail(const std::string& what) {
    answer_->fail(server_ + what);
    return false;
}

} // namespace platform
