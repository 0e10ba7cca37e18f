#pragma once

#include "platform/models/server/model_server.h"
#include "platform/models/server/server_probe.h"
#include "platform/models/settings/model_settings.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// What earlier looks have found out about a server.
struct KnownServer {
    bool isSlow = false;                    // it did not answer in time
    std::optional<ServedModel> served = {}; // what it had when it last answered
    std::vector<std::string> unusable = {}; // models that have turned out not to answer
};

// One look at the server that the user has chosen, or else at all that may run on this computer. Any thread.
class ServerLook : public std::enable_shared_from_this<ServerLook> {
public:
    using Clock = std::chrono::steady_clock;

    // How long a look waits for the preferred servers before it takes the first one that is ready. While none
    // is ready, a generation waits until the second time.
    static constexpr std::chrono::milliseconds shortWait{250}, longWait = ServerProbe::silenceLimit;

    struct Entry {
        ModelServer server;
        ServerState state = {};
        std::optional<std::uint32_t> userId = {}; // whose program it is, where that is known
        bool isLate = false;                      // its answer has not come in the short wait
    };

    // `known` tells of earlier looks.
    ServerLook(const ModelSettings& settings, const std::function<KnownServer(const ServerAddress&)>& known);

    // Asks all servers at once. For a thread that may block for some milliseconds.
    void start();
    void close();

    // All servers, those preferred first.
    std::vector<Entry> entries() const;
    // The model that answers, as far as is known: of the first server that is ready; else of one that was
    // ready in an earlier look and is silent now, as servers are that answer one call at a time.
    std::optional<ServedModel> served() const;

    // Blocks, at most until the end of the short wait, or of the long one until every server has answered.
    void waitShortly() const;
    void waitForAll() const;
    // Calls back once, at once or on a background thread, when waiting longer makes no difference. Waits end
    // when checkTime() is called after them.
    void whenDecided(std::function<void()> call);
    void checkTime();

    // Whether whenDecided() calls back at once.
    bool isDecided() const;
    // When that was first seen, at an answer or in checkTime(); absent until then.
    std::optional<Clock::time_point> decidedAt() const;

private:
    struct Candidate {
        ModelServer server;
        KnownServer known;
        std::shared_ptr<ServerProbe> probe = {}; // absent: it is not asked
        std::string whyNotAsked = {};
        std::optional<std::uint32_t> userId = {};
        std::optional<Clock::time_point> answeredAt = {};
    };

    void startProbe(Candidate& candidate);
    void changed();

    ServerState stateOf(const Candidate& candidate) const;
    bool hasPassed(std::chrono::milliseconds wait) const { return Clock::now() >= startedAt_ + wait; }
    bool isWaitingFor(const ServerState& state, const Candidate& candidate) const;
    bool isDecidedForNow() const;
    bool isDecidedLocked() const;
    std::optional<ServedModel> servedLocked() const;

    const Clock::time_point startedAt_ = Clock::now();
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    bool isStarted_ = false;
    std::optional<Clock::time_point> decidedAt_;
    std::vector<Candidate> candidates_;
    std::vector<std::function<void()>> waiting_;
};

} // namespace platform
