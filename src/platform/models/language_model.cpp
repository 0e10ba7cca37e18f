// Sessions and streams: what a generation waits for, over whichever model answers.
#include "platform/language_model.h"

#include "platform/models/generation/answer.h"
#include "platform/models/generation/response_stream.h"
#include "platform/models/model_choice.h"
#include "platform/models/server/answer.h"

namespace platform {
namespace {

void start(const ModelChoice& model, const Prompt& prompt, const std::shared_ptr<Answer>& answer) {
    if (!answer->isWanted()) return;
    if (const auto* served = std::get_if<ServedModel>(&model))
        return answerFromServer(*served, prompt, answer);
    answer->fail(std::get<SystemLanguageModel::UnavailableReason>(model).description);
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

ResponseStream LanguageModelSession::streamResponse(std::string prompt, const GenerationOptions& options) {
    auto answer = std::make_shared<Answer>();
    chooseModelForGeneration([answer, asked = Prompt{native_->instructions, std::move(prompt), options}](
                                 const ModelChoice& model) { start(model, asked, answer); });
    return streamOf(std::move(answer));
}

} // namespace platform
