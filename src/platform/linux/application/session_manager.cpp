#include "platform/linux/application/session_manager.h"

#include "platform/linux/application/session_membership.h"
#include "platform/main_queue.h"

#include <cstdlib>
#include <thread>
#include <utility>

namespace platform {

// Joining waits for the manager, so it has a thread of its own. Should the manager hang, so does the thread,
// until the program ends.
SessionManager::SessionManager(std::function<void()> endAsked) : endAsked_(std::move(endAsked)) {
    const char* address = std::getenv("SESSION_MANAGER");
    if (address == nullptr || *address == '\0') return;
    std::thread([this, life = std::weak_ptr(life_)] {
        const auto connection = connectToSession();
        if (connection == nullptr) return;
        MainQueue::async([this, life, connection] {
            if (!life.expired()) membership_ = std::make_unique<SessionMembership>(connection, endAsked_);
        });
    }).detach();
}

SessionManager::~SessionManager() = default;

void SessionManager::refuse() {
    if (membership_) membership_->answer(false);
}

} // namespace platform
