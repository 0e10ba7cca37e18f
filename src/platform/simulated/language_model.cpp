#include "platform/simulated/language_model.h"

#include "platform/simulated/world.h"

namespace simulated {

Script& Script::says(Seconds after, std::string content) {
    steps.push_back({after, std::move(content)});
    return *this;
}

Script& Script::ends(Seconds after) {
    end = after;
    return *this;
}

Script& Script::collects(Seconds after) {
    collect = after;
    return *this;
}

Script& Script::cancelled(OnCancel reaction) {
    onCancel = reaction;
    return *this;
}

Script& Script::counts(std::int64_t tokens) { return reflects({{{"responseTokenCount", tokens}}}); }

Script& Script::reflects(platform::Mirror mirror) {
    response = std::move(mirror);
    return *this;
}

} // namespace simulated

namespace platform {

using simulated::World;

const SystemLanguageModel& SystemLanguageModel::defaultModel() {
    static const SystemLanguageModel model;
    return model;
}

SystemLanguageModel::Availability SystemLanguageModel::availability() const {
    auto& model = World::current().languageModel;
    ++model.availabilityQuestions;
    return model.availability;
}

class LanguageModelSession::Native {
public:
    std::string instructions;
    std::vector<Tool> tools;
};

LanguageModelSession::LanguageModelSession(const SystemLanguageModel&, std::vector<Tool> tools,
                                           std::string instructions)
    : native_(std::make_unique<Native>(Native{std::move(instructions), std::move(tools)})) {}

LanguageModelSession::~LanguageModelSession() = default;

ResponseStream LanguageModelSession::streamResponse(std::string prompt, const GenerationOptions& options) {
    auto& model = World::current().languageModel;
    model.asked.push_back({native_->instructions, native_->tools.size(), std::move(prompt), options});
    simulated::Script script;
    if (!model.scripts.empty()) {
        script = std::move(model.scripts.front());
        model.scripts.pop_front();
    }
    return simulated::startStream(std::move(script));
}

} // namespace platform
