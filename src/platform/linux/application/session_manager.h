#pragma once

#include <functional>
#include <memory>

namespace platform {

// The desktop session's manager, where there is one: it asks its programs before the session ends. Spoken is
// X session management, as the managers of GNOME, KDE Plasma, Xfce, MATE and Cinnamon do; others end their
// programs by signal. Without a manager nothing happens, ever. Main thread only.
class SessionManager {
public:
    // Joins the session; leaves it with the object. `endAsked` is called from the main queue when the session
    // is to end: refuse(), or end the program.
    explicit SessionManager(std::function<void()> endAsked);
    ~SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    // The session goes on. Does nothing when there is no question to answer.
    void refuse();

private:
    std::function<void()> endAsked_;
    std::unique_ptr<class SessionMembership> membership_; // null until the manager has let us join
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace platform
