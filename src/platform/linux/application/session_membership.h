#pragma once

#include <X11/SM/SMlib.h>
#include <sigc++/connection.h>

#include <functional>

namespace platform {

// Asks the manager that SESSION_MANAGER names to let this program join its session, and waits for the answer.
// Null when there is none. Any thread, while no other speaks to a manager.
SmcConn connectToSession();

// This program as the session's manager knows it. Main thread only.
class SessionMembership {
public:
    // Owns the connection. `endAsked` is called from the main queue when the session is to end.
    SessionMembership(SmcConn connection, std::function<void()> endAsked);
    // Leaves the session, agreeing to its end if that is the question.
    ~SessionMembership();
    SessionMembership(const SessionMembership&) = delete;
    SessionMembership& operator=(const SessionMembership&) = delete;

    // Whether the session may end. Does nothing when it has not asked.
    void answer(bool agreed);

private:
    // The person can only be spoken to when the manager says that it is our turn, and only then can the end
    // of the session be called off.
    enum class Question { none, turnAwaited, putAtOurTurn, putWithoutTurn };

    bool readMessages();
    void saveYourself(bool sessionEnds, bool mayTakeTurn);
    void put(Question question);
    void calledOff();

    SmcConn connection_;
    std::function<void()> endAsked_;
    Question question_ = Question::none;
    sigc::connection messages_;
};

} // namespace platform
