#include "platform/models/model_finder.h"

#include "platform/main_queue.h"
#include "platform/models/generation/background_executor.h"
#include "platform/models/settings/model_settings.h"
#include "platform/never_destroyed.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <utility>

namespace platform {
namespace {

using Reason = SystemLanguageModel::UnavailableReason;
using Kind = ServerState::Kind;

constexpr auto notEnabled = "appleIntelligenceNotEnabled", notReady = "modelNotReady";
constexpr auto noModel =
    "No language model runs on this computer. Start a local model server (Ollama, llama-server, "
    "LM Studio or vLLM), or choose a server: quillmark-host --language-model ADDRESS";

// The settings, and the look at the servers that they name.
struct Found {
    ReadSettings settings;
    std::shared_ptr<ServerLook> look;
};

class ModelFinder {
public:
    // The look whose result a caller gets now. True when it still has to be started.
    std::pair<Found, bool> look() {
        auto settings = readModelSettings();
        const std::lock_guard lock(mutex_);
        if (last_.look && last_.settings == settings && isFresh(*last_.look)) return {last_, false};
        learnFromLast();
        last_ = {settings,
                 std::make_shared<ServerLook>(settings.settings, [this](const ServerAddress& address) {
                     return known_[address.url()];
                 })};
        return {last_, true};
    }

    void rememberUnusable(const ServerAddress& server, const std::string& model) {
        const std::lock_guard lock(mutex_);
        auto& unusable = known_[server.url()].unusable;
        if (std::ranges::find(unusable, model) == unusable.end()) unusable.push_back(model);
        last_ = {};
    }

    // A look that still waits for servers sees the change by itself.
    void forgetLook() {
        const std::lock_guard lock(mutex_);
        if (!last_.look || !last_.look->isDecided()) return;
        learnFromLast();
        last_ = {};
    }

    static ModelFinder& shared() {
        static const NeverDestroyed<ModelFinder> finder;
        return *finder;
    }

private:
    // A look serves until a second after its outcome: so a slow server's answer is told and learned too.
    static bool isFresh(const ServerLook& look) {
        const auto decidedAt = look.decidedAt();
        return !decidedAt || ServerLook::Clock::now() - *decidedAt < std::chrono::seconds(1);
    }

    void learnFromLast() {
        if (!last_.look) return;
        for (const auto& entry : last_.look->entries()) {
            auto& known = known_[entry.server.address.url()];
            known.isSlow = entry.isLate;
            if (entry.state.kind == Kind::ready) known.served = entry.state.served;
            if (entry.state.kind == Kind::absent || entry.state.kind == Kind::notReady) known.served.reset();
        }
        last_.look->close();
    }

    std::mutex mutex_;
    Found last_;
    std::map<std::string, KnownServer> known_; // by address
};

Found currentLook() {
    auto [found, isNew] = ModelFinder::shared().look();
    if (!isNew) return found;
    runBlocking([look = found.look] { look->start(); });
    for (const auto wait : {ServerLook::shortWait, ServerLook::longWait})
        MainQueue::asyncAfter(wait, [look = found.look] { look->checkTime(); });
    return found;
}

// A chosen server that is silent is asked all the same: it answers once it has finished its other work.
ModelChoice choiceForGeneration(const Found& found) {
    auto choice = choiceOf(found.settings, *found.look);
    const auto entries = found.look->entries();
    const auto& server = entries.front().server;
    const bool isSilent = server.isChosen && entries.front().state.kind == Kind::silent;
    if (std::holds_alternative<ServedModel>(choice) || !isSilent) return choice;
    ServedModel served{.server = server};
    if (!server.wantedModel.empty()) served.models = {server.wantedModel};
    return served;
}

} // namespace

// A server that the user has chosen is used or reported, never replaced.
ModelChoice choiceOf(const ReadSettings& settings, const ServerLook& look) {
    if (!settings.problem.empty()) return Reason{notEnabled, settings.problem};
    if (auto served = look.served()) return *std::move(served);
    const auto entries = look.entries();
    const auto loading =
        std::ranges::find(entries, Kind::notReady, [](const auto& entry) { return entry.state.kind; });
    if (loading != entries.end()) return Reason{notReady, loading->state.sentence};
    if (!settings.settings.address) return Reason{notEnabled, noModel};
    const auto& state = entries.front().state;
    return Reason{state.kind == Kind::silent ? notReady : notEnabled, state.sentence};
}

ModelChoice findModel() {
    const auto found = currentLook();
    if (found.settings.problem.empty()) found.look->waitShortly();
    return choiceOf(found.settings, *found.look);
}

void findModelForGeneration(std::function<void(const ModelChoice&)> call) {
    runBlocking([call = std::move(call)] {
        const auto found = currentLook();
        if (!found.settings.problem.empty()) return call(choiceOf(found.settings, *found.look));
        found.look->whenDecided([call, found] { call(choiceForGeneration(found)); });
    });
}

void lookAnew() { ModelFinder::shared().forgetLook(); }

void rememberUnusable(const ServerAddress& server, const std::string& model) {
    ModelFinder::shared().rememberUnusable(server, model);
}

} // namespace platform
