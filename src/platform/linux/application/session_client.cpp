#include "platform/linux/application/session_client.h"

#include "platform/linux/application/session_membership.h"
#include "platform/linux/base/environment.h"
#include "platform/main_queue.h"

#include <thread>
#include <utility>

namespace platform {

// Joining waits for the manager, so it has a thread of its own, which ends with the program at the latest.
SessionClient::SessionClient(SessionCalls calls, SessionRestart restart)
    : calls_(std::move(calls)), restart_(std::move(restart)) {
    if (environmentVariable("SESSION_MANAGER").empty()) return;
    std::thread([this, clientId = restart_.clientId, life = std::weak_ptr(life_)] {
        const auto connection = connectToSession(clientId);
        if (connection == nullptr) return;
        MainQueue::async(life, [this, connection] {
            membership_ = std::make_unique<SessionMembership>(connection, calls_, restart_.command);
        });
    }).detach();
}

SessionClient::~SessionClient() = default;

void SessionClient::refuse() {
    if (membership_) membership_->answer(false);
}

} // namespace platform
