#pragma once

#include "platform/application.h"

#include <functional>

namespace platform {

// Whether the program may end: puts the question to the delegate, and its answer to whoever asked. Main
// thread only.
class Termination {
public:
    static Termination& shared();

    // The question comes from the person (the menu, a signal, the command line) or from the end of the
    // session.
    void askedByPerson() { ask(byPerson_); }
    void askedBySession() { ask(bySession_); }

    // The session goes on. Takes its question back from the delegate, unless the person has asked too.
    void sessionGoesOn();

    // What the delegate has decided.
    void settle(ApplicationTerminateReply reply);

    ApplicationDelegate* delegate = nullptr; // not owned; null: the program ends at once
    std::function<void()> refuseSession;     // tells the session that it may not end; may be empty

private:
    void ask(bool& asker);

    bool byPerson_ = false; // and waits for the answer
    bool bySession_ = false;
};

} // namespace platform
