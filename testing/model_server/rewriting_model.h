// A model server for an interface that rewrites texts: each answer is as the test has it.
#pragma once

#include "testing/model_server/scripted_server.h"

#include <mutex>
#include <string>

namespace testbed {

class RewritingModel {
public:
    enum class Manner {
        whole,
        half,  // the first half; the rest with finish(), or nothing once the caller has enough
        dies,  // the first half; then the connection ends
        fails, // an error instead of an answer
    };

    // From the next request on.
    void answers(const std::string& text, Manner manner = Manner::whole);
    // Whatever waits.
    void finish();
    std::string address() const { return server_.url(); }

    // Of the requests so far: how many, and the latest as it came over the wire.
    int requests();
    std::string request();
    // Callers who had enough of half an answer.
    int hungUp();

private:
    void chat(ClientConnection& connection);
    // Waits for finish(); false when the caller has enough first.
    bool mayFinish(int number, ClientConnection& connection);

    std::mutex mutex_;
    std::string text_, request_;
    Manner manner_ = Manner::whole;
    int requests_ = 0, hungUp_ = 0, finished_ = 0;
    ScriptedServer server_{{.chat = [this](ClientConnection& connection) { chat(connection); }}};
};

} // namespace testbed
