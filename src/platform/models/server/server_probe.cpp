#include "platform/models/server/server_probe.h"

#include "platform/models/server/chat_completion.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

namespace platform {
namespace {

using Kind = ServerState::Kind;

constexpr unsigned ok = 200, unauthorized = 401, forbidden = 403, unavailable = 503;

bool isNamed(const ListedModel& model, const std::string& name) {
    return model.name == name || model.name == name + ":latest"; // Ollama's
}

} // namespace

class ServerProbe::Receiver : public HttpReceiver {
public:
    Receiver(std::shared_ptr<ServerProbe> probe, Reply& reply) : probe_(std::move(probe)), reply_(reply) {}

    void connected() override {
        const std::lock_guard lock(probe_->mutex_);
        probe_->connected_ = true;
    }
    std::chrono::milliseconds head(unsigned status) override {
        const std::lock_guard lock(probe_->mutex_);
        reply_.status = status;
        return silenceLimit;
    }
    std::optional<std::chrono::milliseconds> body(std::string_view bytes) override {
        constexpr std::size_t mostBytes = 4 << 20;
        const std::lock_guard lock(probe_->mutex_);
        if (reply_.body.size() < mostBytes) reply_.body += bytes;
        return silenceLimit;
    }
    void finished(HttpEnd end, const std::string& reason) override {
        {
            const std::lock_guard lock(probe_->mutex_);
            reply_.isOver = true;
            reply_.end = end;
            reply_.reason = reason;
            probe_->learn();
        }
        probe_->changed_();
    }

private:
    std::shared_ptr<ServerProbe> probe_;
    Reply& reply_;
};

ServerProbe::ServerProbe(ModelServer server, std::vector<std::string> unusable, std::function<void()> changed)
    : server_(std::move(server)), unusable_(std::move(unusable)), changed_(std::move(changed)) {}

void ServerProbe::start() {
    const std::lock_guard lock(mutex_);
    ask(health_, server_.address.origin() + "/health");
    ask(list_, server_.address.url() + "/models");
    if (server_.address.isOnThisComputer()) ask(tags_, server_.address.origin() + "/api/tags");
}

void ServerProbe::close() {
    const std::lock_guard lock(mutex_);
    for (const auto& close : std::exchange(closers_, {}))
        close();
}

void ServerProbe::ask(Reply& reply, const std::string& url, std::string body) {
    reply = {.isAsked = true};
    HttpRequest request{.url = url,
                        .body = std::move(body),
                        .bearer = server_.key,
                        .urgent = true,
                        .connectLimit = silenceLimit,
                        .headLimit = silenceLimit};
    closers_.push_back(
        startHttpExchange(std::move(request), std::make_shared<Receiver>(shared_from_this(), reply)));
}

// Takes in what the replies say that have come.
void ServerProbe::learn() {
    if (show_.isOver && models_) {
        const auto model = std::ranges::find(models_->models, shown_, &ListedModel::name);
        model->capabilities = readOllamaCapabilities(show_.body);
        // A model whose capabilities Ollama does not list counts as one that can answer.
        if (model->capabilities.empty()) model->capabilities = {"completion"};
        show_ = {};
    }
    if (!models_ && list_.isOver && list_.status == ok && !tags_.isPending()) {
        models_ = readModelList(list_.body);
        const bool hasTags = models_ && tags_.status == ok && addOllamaTags(tags_.body, models_->models);
        // llama-server has an answer to Ollama's question too.
        isOllama_ = hasTags && std::ranges::none_of(models_->models, [](const ListedModel& model) {
                        return model.owner == "llamacpp";
                    });
    }
    if (isOllama_) askForCapabilities();
}

// Asks for those of the preferred model that may be used; again with the next one, until one can answer.
void ServerProbe::askForCapabilities() {
    const auto usable = usableModels();
    if (show_.isPending() || usable.empty() || !usable.front().capabilities.empty()) return;
    shown_ = usable.front().name;
    ask(show_, server_.address.origin() + "/api/show", ollamaShowRequest(shown_));
}

ServerState ServerProbe::state() const {
    const std::lock_guard lock(mutex_);
    if (const auto state = loading(health_)) return *state;
    ServerState state;
    state = list_.isOver && !tags_.isPending() ? stateByList() : silent();
    state.mayChange = health_.isPending() || list_.isPending() || tags_.isPending() || show_.isPending();
    return state;
}

// On this computer, a connection that is neither taken nor refused waits in the queue of a program that
// listens.
ServerState ServerProbe::silent() const {
    if (connected_ || server_.address.isOnThisComputer())
        return because(Kind::silent,
                       "takes calls and does not answer at the moment. Wait until it has finished its "
                       "other work, or restart it.");
    return because(Kind::absent, "does not answer. Check that it is running, or correct its address.");
}

ServerState ServerProbe::stateByList() const {
    if (list_.end == HttpEnd::unreachable)
        return because(Kind::absent,
                       "cannot be reached (" + list_.reason + "). Start it, or correct its address.");
    if (list_.end == HttpEnd::untrusted)
        return because(Kind::absent, "could not prove that it is that server (" + list_.reason +
                                         "). Correct its address, or its certificate.");
    if (list_.end == HttpEnd::silent || list_.end == HttpEnd::unanswered) return silent();
    if (const auto state = loading(list_)) return *state;
    if (list_.status == unavailable && server_.isChosen)
        return because(Kind::silent, "is not available at the moment. Wait a moment, then try again.");
    if (list_.status == unauthorized || list_.status == forbidden)
        return because(Kind::absent,
                       "wants a key. Add one that it accepts to the settings of the language model.");
    if (!models_ || !(models_->isGenuine || server_.isChosen))
        return because(Kind::absent, "does not speak the language of model servers. Correct its address.");
    return stateByModels(usableModels());
}

ServerState ServerProbe::stateByModels(const std::vector<ListedModel>& usable) const {
    const auto& wanted = server_.wantedModel;
    if (usable.empty() && !wanted.empty())
        return because(Kind::notReady,
                       "has no model \"" + wanted + "\". Load it there, or choose one that it has.");
    if (usable.empty())
        return because(Kind::notReady,
                       models_->models.empty()
                           ? "has no model. Download or load one there, then try again."
                           : "has no model that writes answers and runs on this computer. Download or "
                             "load one there, or choose one by its name.");
    ServerState state{.kind = Kind::ready, .served = {server_, {}, thinkingSwitch(usable.front())}};
    for (const auto& model : usable)
        state.served.models.push_back(model.name);
    return state;
}

// The models that can be asked, in the server's order.
std::vector<ListedModel> ServerProbe::usableModels() const {
    std::vector<ListedModel> usable;
    for (const auto& model : models_->models) {
        const bool isWanted = !server_.wantedModel.empty() && isNamed(model, server_.wantedModel);
        const bool answers = !isNoChatModel(model.name) && !model.runsElsewhere &&
                             (model.capabilities.empty() || model.can("completion")) &&
                             std::ranges::find(unusable_, model.name) == unusable_.end();
        if (server_.wantedModel.empty() ? answers : isWanted) usable.push_back(model);
    }
    return usable;
}

ThinkingSwitch ServerProbe::thinkingSwitch(const ListedModel& model) const {
    if (model.owner == "llamacpp" || model.owner == "vllm") return ThinkingSwitch::chatTemplate;
    return isOllama_ && model.can("thinking") ? ThinkingSwitch::reasoningEffort : ThinkingSwitch::none;
}

// Any program may say that it is unavailable; a model server says so in its own words.
std::optional<ServerState> ServerProbe::loading(const Reply& reply) const {
    if (!reply.isOver || reply.status != unavailable) return std::nullopt;
    const auto words = readError(reply.body).words;
    if (words.empty()) return std::nullopt;
    return because(Kind::notReady, "is not ready: " + words + ". Wait a moment, then try again.");
}

ServerState ServerProbe::because(Kind kind, const std::string& what) const {
    return {.kind = kind, .sentence = "The model server at " + server_.address.shown() + ' ' + what};
}

} // namespace platform
