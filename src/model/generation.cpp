// One generation, from its start in the background to its final event.
#include "model/model_event.h"
#include "model/system_model_bridge.h"
#include "platform/language_model.h"
#include "platform/main_queue.h"

#include <exception>
#include <utility>

using platform::LanguageModelSession;

namespace {

platform::GenerationOptions optionsFor(const GenerationRequest& request) {
    platform::GenerationOptions options;
    if (request.greedy) options.sampling = platform::SamplingMode::greedy;
    options.maximumResponseTokens = request.maxTokens;
    return options;
}

// Only the model's own errors can be refusals.
flutter::EncodableMap failureEvent(const std::string& id, std::exception_ptr failure) {
    try {
        std::rethrow_exception(std::move(failure));
    } catch (const platform::CancellationError&) {
        return modelEvent(id, "error", "error", "cancelled");
    } catch (const LanguageModelSession::GenerationError& error) {
        const std::string description = error.what();
        const bool refused = description.find("guardrailViolation") != std::string::npos ||
                             description.find("refusal") != std::string::npos;
        return refused ? modelEvent(id, "refused", "reason", description)
                       : modelEvent(id, "error", "error", description);
    } catch (const std::exception& error) {
        return modelEvent(id, "error", "error", error.what());
    }
}

} // namespace

platform::Task SystemModelBridge::generate(std::weak_ptr<SystemModelBridge> weak, GenerationRequest request) {
    auto bridge = weak.lock();
    if (!bridge) co_return;

    LanguageModelSession session(platform::SystemLanguageModel::defaultModel(), {},
                                 std::move(request.instructions));
    auto stream = session.streamResponse(std::move(request.prompt), optionsFor(request));

    std::exception_ptr failure;
    try {
        while (auto snapshot = co_await stream.next()) {
            co_await platform::Task::checkCancellation();
            bridge->emit(modelEvent(request.id, "text", "text", std::move(snapshot->content)));
        }
    } catch (const std::exception&) {
        failure = std::current_exception();
    }

    if (failure) {
        bridge->emit(failureEvent(request.id, std::move(failure)));
    } else {
        const char* finishReason = "stop";
        try {
            const auto response = co_await stream.collect();
            if (reflectInt(response.mirror, "responseTokenCount") == request.maxTokens)
                finishReason = "length";
        } catch (const std::exception&) {
            // The answer is there; only its length is not known.
        }
        bridge->emit(modelEvent(request.id, "done", "finish_reason", finishReason));
    }

    // Behind the final event. The bridge goes along, so that it is never destroyed off the main thread.
    platform::MainQueue::async(
        [bridge = std::move(bridge), id = std::move(request.id)] { bridge->tasks_.erase(id); });
}
