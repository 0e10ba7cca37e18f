// The manager of a desktop session, as the host meets it (X session management).
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace testbed {

class SessionManager {
public:
    SessionManager();
    ~SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    // What a program of this session has in its environment.
    std::map<std::string, std::string> environment() const;

    // What the program says next: "joined", "asks to interact" (and is let), "refuses", "has interacted",
    // "agrees", "does not agree", "leaves"; empty when it says nothing in time.
    std::string next();

    // What the program has said of itself last under that name ("RestartCommand"); empty before.
    std::vector<std::string> property(const std::string& name);

    // To a program that has joined.
    void askToEnd(bool mayInteract = true);
    void callOff();
    void end();

private:
    struct Server;
    std::unique_ptr<Server> server_;
};

} // namespace testbed
