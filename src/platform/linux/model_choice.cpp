#include "platform/linux/model_choice.h"

#include "platform/linux/corrector.h"
#include "platform/linux/worker.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>

namespace platform {
namespace {

using Reason = SystemLanguageModel::UnavailableReason;
using Clock = std::chrono::steady_clock;

constexpr auto notEnabled = "appleIntelligenceNotEnabled", notReady = "modelNotReady";
constexpr auto noModel =
    "No language model runs on this computer. Start a local model server (Ollama, llama-server, "
    "LM Studio or vLLM), or install the package hunspell-en-us for spelling corrections.";
constexpr auto noSuchAddress =
    "OPENAI_BASE_URL is not the address of a model server. Set it to one that begins with "
    "http:// (https is not supported), or unset it.";

// A server that the user has set is used or reported, never replaced.
ModelChoice whenNoneIsFound(const ModelServers& servers, const std::string& sentence) {
    if (servers.setExplicitly) return Reason{notEnabled, sentence};
    if (Corrector::isInstalled()) return BuiltInCorrector{};
    return Reason{notEnabled, noModel};
}

// Only used by the thread that chooses.
struct LastChoice {
    ModelChoice choice;
    Clock::time_point madeAt;
};

const ModelChoice& recentChoice() {
    static std::optional<LastChoice> last;
    if (!last || Clock::now() - last->madeAt > std::chrono::seconds(1)) {
        auto choice = chooseModel();
        last = LastChoice{std::move(choice), Clock::now()};
    }
    return last->choice;
}

} // namespace

ModelChoice chooseModel() {
    const auto servers = modelServers();
    if (servers.candidates.empty()) return Reason{notEnabled, noSuchAddress};
    auto state = probeModelServers(servers.candidates);
    if (auto* served = std::get_if<ServedModel>(&state)) return std::move(*served);
    if (auto* waiting = std::get_if<ModelServerNotReady>(&state))
        return Reason{notReady, std::move(waiting->sentence)};
    return whenNoneIsFound(servers, std::get<NoModelServer>(state).sentence);
}

void chooseModelForGeneration(std::function<void(const ModelChoice&)> chosen) {
    static Worker worker;
    worker.async([chosen = std::move(chosen)] { chosen(recentChoice()); });
}

} // namespace platform
