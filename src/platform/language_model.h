#pragma once

#include "platform/reflection.h"
#include "platform/task.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// The on-device language model.
namespace platform {

// The system's own model. A handle without state. Any thread.
class SystemLanguageModel {
public:
    struct Available {};

    // Why the model cannot be used.
    struct UnavailableReason {
        // "deviceNotEligible", "appleIntelligenceNotEnabled", "modelNotReady", or a case that the host does
        // not know.
        std::string caseName;
        // A sentence that says what to do.
        std::string description;
    };

    using Availability = std::variant<Available, UnavailableReason>;

    static const SystemLanguageModel& defaultModel();

    // At this moment. Takes a fraction of a second.
    Availability availability() const;

private:
    SystemLanguageModel() = default;
};

enum class SamplingMode { greedy };

struct GenerationOptions {
    std::optional<SamplingMode> sampling; // absent: the model's own
    std::optional<double> temperature;    // absent: the model's own
    // Any number; the model decides what one below 1 means.
    std::int64_t maximumResponseTokens = 0;
};

// A whole answer.
struct Response {
    std::string content;
    // The response's stored fields. "responseTokenCount" is one of them when the model counts tokens.
    Mirror mirror;
};

// An answer as it grows. Used and owned by one task, which waits for one thing at a time. Both operations
// fail with a LanguageModelSession::GenerationError, a CancellationError or any other std::exception.
// Destroying the stream ends the generation.
//
// A stream hands out the newest text, never each piece: the first snapshot at once, the last one always, and
// no more in between than the interface takes. A model that writes fast and an interface that reads slowly
// cost no memory.
class ResponseStream {
public:
    // One generation; each desktop completes it.
    class Native;

    // The whole answer so far, as UTF-8.
    struct Snapshot {
        std::string content;
    };

    explicit ResponseStream(std::unique_ptr<Native> native);
    ~ResponseStream();
    ResponseStream(ResponseStream&& other) noexcept;
    ResponseStream& operator=(ResponseStream&& other) noexcept;

    // `co_await stream.next()`: a std::optional<Snapshot>, absent at the end of the answer.
    class Next;
    Next next();

    // `co_await stream.collect()`: the Response, once the answer has ended.
    class Collect;
    Collect collect();

private:
    std::unique_ptr<Native> native_;
};

// What next() and collect() return, to be awaited in the same expression. Each desktop defines them, and
// resumes the task on the executor.
class [[nodiscard]] ResponseStream::Next {
public:
    explicit Next(Native& stream) : stream_(stream) {}

    // True: the result is ready, and the task goes on at once.
    bool await_ready();
    void await_suspend(Task::Suspended task);
    std::optional<Snapshot> await_resume();

private:
    Native& stream_;
};

class [[nodiscard]] ResponseStream::Collect {
public:
    explicit Collect(Native& stream) : stream_(stream) {}

    bool await_ready();
    void await_suspend(Task::Suspended task);
    Response await_resume();

private:
    Native& stream_;
};

// Something that a model may call; the host offers none.
struct Tool {};

// One conversation with a model under given instructions. Used and owned by one task, which destroys its
// streams first.
class LanguageModelSession {
public:
    // The model failed or refused to answer. what() is a sentence for the user, which contains
    // "guardrailViolation" or "refusal" when the model refused.
    class GenerationError : public std::exception {
    public:
        explicit GenerationError(std::string description) : description_(std::move(description)) {}
        const char* what() const noexcept override { return description_.c_str(); }

    private:
        std::string description_;
    };

    LanguageModelSession(const SystemLanguageModel& model, std::vector<Tool> tools, std::string instructions);
    ~LanguageModelSession();
    LanguageModelSession(const LanguageModelSession&) = delete;
    LanguageModelSession& operator=(const LanguageModelSession&) = delete;

    // Starts an answer; never fails by itself.
    ResponseStream streamResponse(std::string prompt, const GenerationOptions& options);

    class Native;

private:
    std::unique_ptr<Native> native_;
};

} // namespace platform
