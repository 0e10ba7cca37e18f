#pragma once

#include "platform/linux/application/session_client.h"

#include <X11/SM/SMlib.h>
#include <sigc++/connection.h>

#include <string>
#include <vector>

namespace platform {

// Asks the manager that SESSION_MANAGER names to let this program join its session, and waits for the answer.
// `clientId` is how the manager knew an earlier run of it; may be empty. Null when the manager does not
// answer or refuses. Any thread, as long as no other thread uses a session manager.
SmcConn connectToSession(const std::string& clientId);

// This program as the session's manager knows it. Main thread only.
class SessionMembership {
public:
    // Owns the connection. `restart` is the command that starts the program again.
    SessionMembership(SmcConn connection, SessionCalls calls, std::vector<std::string> restart);
    // Leaves the session. If the question is whether it may end, agrees, and waits until it does: a minute at
    // most.
    ~SessionMembership();
    SessionMembership(const SessionMembership&) = delete;
    SessionMembership& operator=(const SessionMembership&) = delete;

    // Whether the session may end. Does nothing when it has not asked.
    void answer(bool agreed);

private:
    // A program may talk to the person, and call off the end of the session, only while it has the turn to
    // interact, which the manager gives to one program after the other.
    enum class Question { none, turnAwaited, askedInTurn, askedWithoutTurn };

    bool readMessages();
    void saveYourself(bool sessionEnds, bool mayAskForTurn);
    void ask(Question question);
    void calledOff();
    void dies();
    void awaitEndOfSession();

    SmcConn connection_;
    SessionCalls calls_;
    Question question_ = Question::none;
    bool isDecided_ = false; // since the last question: whether the session ends or goes on
    sigc::connection messages_;
};

} // namespace platform
