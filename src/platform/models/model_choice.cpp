#include "platform/models/model_choice.h"

#include "platform/models/generation/worker.h"

#include <chrono>
#include <memory>
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
    "LM Studio or vLLM).";
constexpr auto noSuchAddress =
    "OPENAI_BASE_URL is not the address of a model server. Set it to one that begins with "
    "http:// (https is not supported), or unset it.";

// A server that the user has set is used or reported, never replaced.
ModelChoice choiceFor(const ModelServers& servers, const ModelServerState& state) {
    if (servers.candidates.empty()) return Reason{notEnabled, noSuchAddress};
    if (const auto* served = std::get_if<ServedModel>(&state)) return *served;
    if (const auto* loading = std::get_if<ModelServerNotReady>(&state))
        return Reason{notReady, loading->sentence};
    const auto* silent = std::get_if<ModelServerSilent>(&state);
    if (servers.setExplicitly)
        return silent ? Reason{notReady, silent->sentence}
                      : Reason{notEnabled, std::get<NoModelServer>(state).sentence};
    return Reason{notEnabled, noModel};
}

// Only used by the thread that chooses.
struct LastChoice {
    ModelServers servers;
    ModelChoice choice;
    Clock::time_point madeAt;
};

// A server that answers one call at a time is silent while it works: what it is asked now, it takes up later.
// Whoever is silent on a usual port may be anything, unless it was the model before.
std::optional<ServedModel> busyModel(const ModelServers& servers, const ModelServerState& state,
                                     const std::optional<LastChoice>& last) {
    const auto* silent = std::get_if<ModelServerSilent>(&state);
    const auto* before = last ? std::get_if<ServedModel>(&last->choice) : nullptr;
    if (silent && before && before->server == silent->server) return *before;
    if (silent && servers.setExplicitly) return ServedModel{silent->server, silent->server.model};
    return std::nullopt;
}

const ModelChoice& recentChoice() {
    // Never destroyed: the thread still runs when the program ends.
    static auto& last = *std::make_unique<std::optional<LastChoice>>().release();
    const auto servers = modelServers();
    if (last && last->servers == servers && Clock::now() - last->madeAt < std::chrono::seconds(1))
        return last->choice;
    const auto state = probeModelServers(servers.candidates);
    const auto busy = busyModel(servers, state, last);
    last = LastChoice{servers, busy ? *busy : choiceFor(servers, state), Clock::now()};
    return last->choice;
}

} // namespace

ModelChoice chooseModel() {
    const auto servers = modelServers();
    return choiceFor(servers, probeModelServers(servers.candidates));
}

void chooseModelForGeneration(std::function<void(const ModelChoice&)> chosen) {
    static Worker worker;
    worker.async([chosen = std::move(chosen)] { chosen(recentChoice()); });
}

} // namespace platform
