#include "platform/models/server_look.h"

#include "platform/listening_sockets.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace platform {
namespace {

using Kind = ServerState::Kind;

constexpr std::uint16_t ollamaPort = 11434;
// llama-server's own and the one that other programs start it on, LM Studio's, vLLM's.
constexpr std::array<std::uint16_t, 4> otherPorts{8080, 9931, 1234, 8000};

std::vector<ServerAddress> addressesFor(const ModelSettings& settings) {
    if (settings.address) return {*settings.address};
    std::vector<ServerAddress> addresses{settings.ollama.value_or(ServerAddress{.port = ollamaPort})};
    for (const auto port : otherPorts)
        addresses.push_back({.port = port});
    return addresses;
}

// Empty when a server that the user has not chosen may have the text; else why it may not.
std::string whyNotTrusted(const ServerAddress& address, const std::vector<ListeningSocket>& listeners) {
    if (listeners.empty()) return "Nothing listens at " + address.shown() + '.';
    const auto stranger =
        std::ranges::find(listeners, ListeningSocket::Owner::anotherUser, &ListeningSocket::owner);
    if (stranger == listeners.end()) return "";
    return "The program at " + address.shown() + " belongs to another user (" +
           accountName(stranger->userId) +
           "). It is used only if you choose it: quillmark-host --language-model " + address.url();
}

} // namespace

ServerLook::ServerLook(const ModelSettings& settings,
                       const std::function<KnownServer(const ServerAddress&)>& known) {
    for (const auto& address : addressesFor(settings)) {
        candidates_.push_back({.server = {.address = address,
                                          .key = settings.address ? settings.key : "",
                                          .wantedModel = settings.model,
                                          .isChosen = settings.address.has_value(),
                                          .thinking = settings.thinking},
                               .known = known(address)});
    }
}

// The system is asked without the lock, which other threads expect to get soon.
void ServerLook::start() {
    const auto sockets = listeningSockets();
    for (auto& candidate : candidates_) {
        const auto& server = candidate.server;
        std::vector<ListeningSocket> listeners;
        if (server.address.isOnThisComputer())
            std::ranges::copy_if(sockets, std::back_inserter(listeners), [&](const ListeningSocket& socket) {
                return socket.port == server.address.port;
            });
        auto whyNot = server.isChosen ? std::string() : whyNotTrusted(server.address, listeners);
        const std::lock_guard lock(mutex_);
        if (!listeners.empty()) candidate.userId = listeners.front().userId;
        candidate.whyNotAsked = std::move(whyNot);
        if (candidate.whyNotAsked.empty()) startProbe(candidate);
    }
    {
        const std::lock_guard lock(mutex_);
        isStarted_ = true;
    }
    changed();
}

void ServerLook::startProbe(Candidate& candidate) {
    candidate.probe =
        std::make_shared<ServerProbe>(candidate.server, candidate.known.unusable, [weak = weak_from_this()] {
            if (const auto look = weak.lock()) look->changed();
        });
    candidate.probe->start();
}

void ServerLook::close() {
    const std::lock_guard lock(mutex_);
    for (const auto& candidate : candidates_)
        if (candidate.probe) candidate.probe->close();
}

void ServerLook::changed() {
    std::unique_lock lock(mutex_);
    for (auto& candidate : candidates_)
        if (!candidate.answeredAt && !stateOf(candidate).mayChange) candidate.answeredAt = Clock::now();
    const bool decided = isDecidedLocked();
    if (decided && !decidedAt_) decidedAt_ = Clock::now();
    const auto ready = decided ? std::exchange(waiting_, {}) : std::vector<std::function<void()>>();
    lock.unlock();
    changed_.notify_all();
    for (const auto& call : ready)
        call();
}

ServerState ServerLook::stateOf(const Candidate& candidate) const {
    if (candidate.probe) return candidate.probe->state();
    return {.kind = Kind::absent, .sentence = candidate.whyNotAsked, .mayChange = !isStarted_};
}

// A server that was slow in the last look is taken as soon as it answers, but not waited for.
bool ServerLook::isWaitingFor(const ServerState& state, const Candidate& candidate) const {
    return state.mayChange && !candidate.known.isSlow && !hasPassed(shortWait);
}

bool ServerLook::isDecidedForNow() const {
    for (const auto& candidate : candidates_) {
        const auto state = stateOf(candidate);
        if (isWaitingFor(state, candidate)) return false;
        if (state.kind == Kind::ready) return true;
    }
    return true;
}

bool ServerLook::isDecidedLocked() const {
    if (!isStarted_ || !isDecidedForNow()) return false;
    return servedLocked() || hasPassed(longWait) ||
           std::ranges::none_of(candidates_,
                                [&](const Candidate& candidate) { return stateOf(candidate).mayChange; });
}

bool ServerLook::isDecided() const {
    const std::lock_guard lock(mutex_);
    return isDecidedLocked();
}

std::optional<ServerLook::Clock::time_point> ServerLook::decidedAt() const {
    const std::lock_guard lock(mutex_);
    return decidedAt_;
}

std::optional<ServedModel> ServerLook::servedLocked() const {
    std::optional<ServedModel> busy;
    for (const auto& candidate : candidates_) {
        const auto state = stateOf(candidate);
        if (state.kind == Kind::ready) return state.served;
        // The user may have chosen another model of that server since.
        const auto& earlier = candidate.known.served;
        const bool isWanted = earlier && earlier->server.wantedModel == candidate.server.wantedModel;
        if (state.kind != Kind::silent || !isWanted || busy) continue;
        busy = earlier;
        busy->server = candidate.server;
    }
    return busy;
}

std::optional<ServedModel> ServerLook::served() const {
    const std::lock_guard lock(mutex_);
    return servedLocked();
}

std::vector<ServerLook::Entry> ServerLook::entries() const {
    const std::lock_guard lock(mutex_);
    std::vector<Entry> entries;
    for (const auto& candidate : candidates_) {
        const bool isLate = candidate.answeredAt.value_or(Clock::now()) > startedAt_ + shortWait;
        entries.push_back({candidate.server, stateOf(candidate), candidate.userId, isLate});
    }
    return entries;
}

void ServerLook::waitShortly() const {
    std::unique_lock lock(mutex_);
    changed_.wait_until(lock, startedAt_ + shortWait, [&] { return isStarted_ && isDecidedForNow(); });
}

void ServerLook::waitForAll() const {
    std::unique_lock lock(mutex_);
    changed_.wait_until(lock, startedAt_ + longWait, [&] {
        return isStarted_ && std::ranges::none_of(candidates_, [&](const Candidate& candidate) {
                   return stateOf(candidate).mayChange;
               });
    });
}

void ServerLook::whenDecided(std::function<void()> call) {
    {
        const std::lock_guard lock(mutex_);
        if (!isDecidedLocked()) {
            waiting_.push_back(std::move(call));
            return;
        }
    }
    call();
}

void ServerLook::checkTime() { changed(); }

} // namespace platform
