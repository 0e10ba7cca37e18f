#include "platform/models/server/probe.h"

#include "platform/models/server/chat_completion.h"
#include "platform/models/server/http_exchange.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

namespace platform {
namespace {

using State = std::optional<ModelServerState>; // absent: not known yet

struct Reply {
    std::optional<HttpEnd> end; // absent: not over
    std::string reason;
    bool connected = false;
    unsigned status = 0;
    std::string body;
};

// Both questions to one server.
struct Probe {
    ModelServer server;
    Reply health; // llama-server says here that it is still loading
    Reply models;
};

// The replies and who waits for them.
struct Board {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<Probe> probes;
};

class Collector : public HttpReceiver {
public:
    Collector(std::shared_ptr<Board> board, Reply& reply) : board_(std::move(board)), reply_(reply) {}

    void connected() override {
        const std::lock_guard lock(board_->mutex);
        reply_.connected = true;
    }
    std::chrono::milliseconds head(unsigned status) override {
        const std::lock_guard lock(board_->mutex);
        reply_.status = status;
        return limit;
    }
    std::optional<std::chrono::milliseconds> body(std::string_view bytes) override {
        constexpr std::size_t longest = 1 << 20;
        const std::lock_guard lock(board_->mutex);
        if (reply_.body.size() < longest) reply_.body += bytes;
        return limit;
    }
    void finished(HttpEnd end, const std::string& reason) override {
        {
            const std::lock_guard lock(board_->mutex);
            reply_.end = end;
            reply_.reason = reason;
        }
        board_->changed.notify_one();
    }

private:
    static constexpr std::chrono::seconds limit{10}; // far longer than anybody waits for it

    std::shared_ptr<Board> board_;
    Reply& reply_;
};

constexpr unsigned ok = 200, unauthorized = 401, forbidden = 403, unavailable = 503;

// Any program may say that it is unavailable; a model server says so in its own words.
State loading(const Probe& probe, const Reply& reply) {
    if (!reply.end || reply.status != unavailable) return std::nullopt;
    const auto words = readErrorMessage(reply.body);
    if (words.empty()) return std::nullopt;
    return ModelServerNotReady{"The model server at " + probe.server.address() + " is not ready: " + words +
                               ". Wait a moment, then try again."};
}

ModelServerState chosenModel(const Probe& probe, const std::vector<std::string>& names) {
    const auto& wanted = probe.server.model;
    if (names.empty()) {
        return ModelServerNotReady{"The model server at " + probe.server.address() +
                                   " has no model. Download or load one there, then try again."};
    }
    if (wanted.empty()) return ServedModel{probe.server, names.front()};
    if (std::ranges::find(names, wanted) != names.end()) return ServedModel{probe.server, wanted};
    return ModelServerNotReady{"The model server at " + probe.server.address() + " has no model \"" + wanted +
                               "\". Load it there, or set OPENAI_MODEL to one that it has."};
}

ModelServerState noAnswer(const Probe& probe, const std::string& what) {
    return NoModelServer{"The model server at " + probe.server.address() + ' ' + what};
}

ModelServerState silent(const Probe& probe) {
    return ModelServerSilent{probe.server,
                             "The model server at " + probe.server.address() +
                                 " takes calls and does not answer at the moment. Wait until it "
                                 "has finished its other work, or restart it."};
}

State stateOf(const Probe& probe, bool inTime) {
    const auto& models = probe.models;
    if (auto state = loading(probe, probe.health)) return state;
    if (inTime && (!models.end || !probe.health.end)) return std::nullopt;
    // On one computer a call that is neither taken nor refused waits in the queue of a program that is there.
    if (!models.end && (models.connected || probe.server.isOnThisComputer())) return silent(probe);
    if (!models.end || models.end == HttpEnd::silent)
        return noAnswer(probe, "does not answer. Check that it is running, or correct its address.");
    if (models.end == HttpEnd::unreachable)
        return noAnswer(probe,
                        "cannot be reached (" + models.reason + "). Start it, or correct its address.");
    if (auto state = loading(probe, models)) return state;
    if (models.status == unavailable) return silent(probe);
    if (models.status == unauthorized || models.status == forbidden)
        return noAnswer(probe, "wants a key. Set OPENAI_API_KEY to one that it accepts.");
    const auto names = models.status == ok ? readModelNames(models.body) : std::nullopt;
    if (!names) return noAnswer(probe, "does not speak the language of model servers. Correct its address.");
    return chosenModel(probe, *names);
}

// The first that is ready decides, once all before it are known; else the first of the best there is.
State decide(const std::vector<Probe>& probes, bool inTime) {
    std::array<State, std::variant_size_v<ModelServerState>> first; // of each kind, the best kind first
    for (const auto& probe : probes) {
        auto state = stateOf(probe, inTime);
        if (!state || std::holds_alternative<ServedModel>(*state)) return state;
        auto& kept = first.at(state->index());
        if (!kept) kept = std::move(state);
    }
    const auto best = std::ranges::find_if(first, [](const State& kept) { return kept.has_value(); });
    return best != first.end() ? *best : NoModelServer{"No model server is set."};
}

std::function<void()> ask(const ModelServer& server, std::string target, const std::shared_ptr<Board>& board,
                          Reply& reply) {
    HttpRequest request{.host = server.host,
                        .port = server.port,
                        .target = std::move(target),
                        .bearer = server.key,
                        .urgent = true};
    return startHttpExchange(std::move(request), std::make_shared<Collector>(board, reply));
}

} // namespace

ModelServerState probeModelServers(const std::vector<ModelServer>& servers, std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    const auto board = std::make_shared<Board>();
    for (const auto& server : servers)
        board->probes.push_back({server, {}, {}});
    std::vector<std::function<void()>> closers;
    for (auto& probe : board->probes) {
        closers.push_back(ask(probe.server, "/health", board, probe.health));
        closers.push_back(ask(probe.server, probe.server.path + "/models", board, probe.models));
    }

    State state;
    {
        std::unique_lock lock(board->mutex);
        board->changed.wait_until(lock, deadline,
                                  [&] { return (state = decide(board->probes, true)).has_value(); });
        if (!state) state = decide(board->probes, false);
    }
    for (const auto& close : closers)
        close();
    return *state;
}

} // namespace platform
