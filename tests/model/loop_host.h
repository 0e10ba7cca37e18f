// The model bridge on the real background threads and main queue, with the test as its interface.
#pragma once

#include "flutter/fake_messenger.h"
#include "model/system_model_bridge.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct LoopHost {
    LoopHost();

    FakeMessenger messenger;
    std::shared_ptr<SystemModelBridge> bridge = SystemModelBridge::create(messenger);

    // A call on the model channel and its answer (describe.h).
    std::string call(const char* method, flutter::EncodableMap arguments = {});
    std::string respond(const std::string& id, const std::string& prompt = "hello");
    std::string cancel(const std::string& id) { return call("cancel", {{"request_id", id}}); }

    // The events since the last time (describe.h), once the condition holds; it is asked after every turn of
    // the main loop. Whatever has come when that takes too long.
    std::vector<std::string> eventsUntil(const std::function<bool()>& condition);
    // The same once a generation has ended, and everything that follows at once.
    std::vector<std::string> allEvents();
    // Whether an event has come since then.
    bool hasEvents() const { return !messenger.sent.empty(); }
};
