// A host whose language model is a server of the test's own.
#pragma once

#include "model/loop_host.h"
#include "testing/model_server/scripted_server.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using Chat = std::function<void(ClientConnection&)>;

struct ServerHost : testing::Test, LoopHost {
    // The server has been chosen.
    ServerHost();
    ~ServerHost() override;

    // From now on this one is, or none with an empty address.
    static void choose(const std::string& url, const std::string& model = "");
    // None is, and a server on this port of the loopback is looked for beside the usual ones.
    static void lookForOneAt(std::uint16_t port);

    // The events of one generation whose server answers like this.
    std::vector<std::string> answerTo(Chat chat, const std::string& prompt = "hello");

    ScriptedServer server;
};

// Answers of servers: the bytes as they are; after a good head and the first word "a"; the same for ever,
// until the other end has had enough; none at all.
Chat sends(std::string bytes);
Chat writes(std::string bytes);
Chat repeats(std::string bytes, std::string piece);
void saysNothing(ClientConnection& connection);

// Events of a stream.
std::string finish(const std::string& reason);
inline const std::string done = "data: [DONE]\n\n";
// What the host makes of the first word.
inline const std::string firstText = "a text text=a";
