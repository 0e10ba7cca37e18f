#include "model/model_host.h"

#include "support/describe.h"

std::string ModelHost::ask(const char* channel, std::string method, flutter::EncodableValue arguments) {
    const auto answer =
        world.interface().ask(channel, flutter::encodeMethodCall({std::move(method), std::move(arguments)}));
    world.settle();
    return answer->bytes ? describeAnswer(*answer->bytes) : "unanswered";
}

std::string ModelHost::call(std::string method, flutter::EncodableValue arguments) {
    return ask(modelChannel, std::move(method), std::move(arguments));
}

std::vector<std::string> ModelHost::events() {
    std::vector<std::string> events;
    for (const auto& message : world.interface().received)
        events.push_back(describeEvent(message.bytes));
    world.interface().received.clear();
    return events;
}
