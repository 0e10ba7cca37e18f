#pragma once

#include "platform/language_model.h"
#include "platform/simulated/clock.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace simulated {

// What a model's stream does when it hears of a cancellation while the host waits for it.
enum class OnCancel { ignore, fail, end };

// How the model answers one prompt. Every time counts from the host's asking for what comes next.
//
//     Script{}.says(10ms, "Dear").says(10ms, "Dear Anna").ends(10ms).counts(3)
struct Script {
    Script& says(Seconds after, std::string content);
    Script& ends(Seconds after);
    // Ends with an error instead.
    template <class Error>
    Script& fails(Seconds after, Error error) {
        failure = std::make_exception_ptr(std::move(error));
        return ends(after);
    }
    Script& cancelled(OnCancel reaction);

    // The final response comes that long after it was asked for.
    Script& collects(Seconds after);
    // Its token count, or all its fields, or an error instead of it.
    Script& counts(std::int64_t tokens);
    Script& reflects(platform::Mirror mirror);
    template <class Error>
    Script& failsToCollect(Error error) {
        response = std::make_exception_ptr(std::move(error));
        return *this;
    }

    struct Step {
        Seconds after;
        std::string content;
    };
    std::vector<Step> steps;
    Seconds end{};
    Seconds collect{};
    std::exception_ptr failure;
    std::variant<platform::Mirror, std::exception_ptr> response;
    OnCancel onCancel = OnCancel::ignore;
};

// The system's language model. Streams take their scripts in the order in which they start.
struct LanguageModel {
    platform::SystemLanguageModel::Availability availability = platform::SystemLanguageModel::Available{};

    // The scripts of the streams to come; a stream for which none is left yields nothing and ends.
    std::deque<Script> scripts;

    // What the host asked for, stream by stream.
    struct Asked {
        std::string instructions;
        std::size_t tools = 0;
        std::string prompt;
        platform::GenerationOptions options;
    };
    std::vector<Asked> asked;
    int availabilityQuestions = 0;
};

// Starts a stream that follows the script.
platform::ResponseStream startStream(Script script);

} // namespace simulated
