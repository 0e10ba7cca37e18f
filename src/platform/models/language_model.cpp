// Sessions and streams: what a generation waits for, over whichever model answers.
#include "platform/language_model.h"

#include "platform/models/generation/answer.h"
#include "platform/models/generation/response_stream.h"
#include "platform/models/model_finder.h"
#include "platform/models/server/ask_server.h"

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace platform {
namespace {

void start(const ModelChoice& choice, const Prompt& prompt, const std::shared_ptr<Answer>& answer) {
    if (!answer->isWanted()) return;
    if (const auto* reason = std::get_if<SystemLanguageModel::UnavailableReason>(&choice))
        return answer->fail(reason->description);
    const auto& served = std::get<ServedModel>(choice);
    askServer(served, prompt, answer,
              {.cannotAnswer = [address = served.server.address](
                                   const std::string& model) { rememberUnusable(address, model); },
               .lost = lookAnew});
}

} // namespace

const SystemLanguageModel& SystemLanguageModel::defaultModel() {
    static const SystemLanguageModel model;
    return model;
}

SystemLanguageModel::Availability SystemLanguageModel::availability() const {
    auto choice = findModel();
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

ResponseStream LanguageModelSession::streamResponse(std::string prompt, const GenerationOptions& options) {
    auto answer = std::make_shared<Answer>();
    findModelForGeneration([answer, asked = Prompt{native_->instructions, std::move(prompt), options}](
                               const ModelChoice& choice) { start(choice, asked, answer); });
    return streamOf(std::move(answer));
}

} // namespace platform
