// The model bridge on a simulated desktop, with the test as its interface.
#pragma once

#include "model/system_model_bridge.h"
#include "platform/simulated/world.h"

#include <memory>
#include <string>
#include <vector>

struct ModelHost {
    simulated::World world;
    flutter::ViewController controller;
    std::shared_ptr<SystemModelBridge> bridge = SystemModelBridge::create(controller.binaryMessenger());

    // A call on the model channel and its answer (describe.h), or "unanswered". What is due at once happens,
    // and no time passes.
    std::string call(std::string method, flutter::EncodableValue arguments = {});
    std::string respond(const std::string& id) {
        return call("respond", flutter::EncodableMap{{"request_id", id}});
    }
    std::string cancel(const std::string& id) {
        return call("cancel", flutter::EncodableMap{{"request_id", id}});
    }
    std::string listen() { return ask(eventChannel, "listen", {}); }
    std::string stopListening() { return ask(eventChannel, "cancel", {}); }

    // The model answers the next prompt like this.
    void model(simulated::Script script) { world.languageModel.scripts.push_back(std::move(script)); }

    // The events since the last time, as "REQUEST KIND KEY=VALUE".
    std::vector<std::string> events();
    // The same once the generations have ended.
    std::vector<std::string> allEvents() {
        world.run();
        return events();
    }

private:
    static constexpr auto modelChannel = "quillmark.quillmark/system_model";
    static constexpr auto eventChannel = "quillmark.quillmark/system_model/events";

    std::string ask(const char* channel, std::string method, flutter::EncodableValue arguments);
};
