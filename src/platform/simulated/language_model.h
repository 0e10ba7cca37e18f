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

// What a stream does when the task that waits for it is cancelled.
enum class OnCancel { ignore, fail, end };

// How the model answers one prompt. Each time counts from the moment at which the host asks for the next
// piece.
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

    // How long the final response takes.
    Script& collects(Seconds after);
    // The final response's token count, all its fields, or an error in its place.
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

// The system's language model. Each stream that starts takes the first script left.
struct LanguageModel {
    platform::SystemLanguageModel::Availability availability = platform::SystemLanguageModel::Available{};

    // A stream that finds no script yields nothing and ends.
    std::deque<Script> scripts;

    // What the host asked for, in the order of the streams.
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
