#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

class SessionMembership;

// What the manager of the desktop session tells its programs.
struct SessionCalls {
    std::function<void()> endAsked;  // may the session end? refuse(), or end the program
    std::function<void()> calledOff; // the session goes on: the question above needs no answer any more
};

// How the manager starts this program again.
struct SessionRestart {
    std::vector<std::string> command; // without the identifier that the manager knows the program by
    std::string clientId;             // as it was given to an earlier run of the program; else empty
};

// This program's part in the desktop session, where the session has a manager that speaks XSMP, the X session
// management protocol: those of GNOME, KDE Plasma, Xfce, MATE and Cinnamon do. The manager asks its programs
// before the session ends, starts this one again when it crashes, and at the next login if it was running.
// Without a manager no call comes. Main thread only.
class SessionClient {
public:
    // Joins the session, in the background: a manager that hangs does not hold up the host. The calls come
    // from the main queue.
    SessionClient(SessionCalls calls, SessionRestart restart);
    // Leaves it. If the question is whether it may end, the answer is yes, and the program waits until it
    // does end: a minute at most.
    ~SessionClient();
    SessionClient(const SessionClient&) = delete;
    SessionClient& operator=(const SessionClient&) = delete;

    // The session shall go on. Does nothing when there is no question to answer.
    void refuse();

private:
    SessionCalls calls_;
    SessionRestart restart_;
    std::unique_ptr<SessionMembership> membership_; // null until the manager has let the program join
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace platform
