#include "testing/soak/generations.h"

#include "flutter/arguments.h"
#include "flutter/standard_codec.h"

#include <map>
#include <thread>

namespace soak {

using namespace std::chrono_literals;
using flutter::EncodableMap;

namespace {

constexpr auto modelChannel = "quillmark.quillmark/system_model";
constexpr auto eventChannel = "quillmark.quillmark/system_model/events";

// How a model may answer.
using Behaviour = void (*)(ClientConnection&);
void answers(ClientConnection& connection) {
    connection.head(200);
    for (int piece = 0; piece < 20; ++piece) {
        connection.text("some words ");
        std::this_thread::sleep_for(5ms);
    }
    connection.send("data: [DONE]\n\n");
}
void answersAtOnce(ClientConnection& connection) {
    connection.head(200);
    connection.text(std::string(100'000, 'x'));
    connection.send("data: [DONE]\n\n");
}
void fails(ClientConnection& connection) { connection.head(500); }
void breaksOff(ClientConnection& connection) {
    connection.head(200);
    connection.text("some words ");
}
void talksNonsense(ClientConnection& connection) {
    connection.head(200);
    connection.send("data: {\"choices\":[{\n\n");
}

// How many generations have ended, by their identifiers, in what the host has sent since `first`.
std::map<std::string, int> ends(const testbed::Host& host, std::size_t first) {
    std::map<std::string, int> ends;
    for (std::size_t at = first; at < host.received().size(); ++at) {
        const auto& frame = host.received()[at].frame;
        if (frame.channel != eventChannel) continue;
        const auto event = flutter::decodeEnvelope(frame.payload);
        const auto* value = event ? std::get_if<flutter::EncodableValue>(&*event) : nullptr;
        const auto* map = value ? flutter::asMap(*value) : nullptr;
        const auto* kind = flutter::asString(flutter::member(map, "kind"));
        const auto* id = flutter::asString(flutter::member(map, "request_id"));
        if (kind && id && *kind != "text") ++ends[*id];
    }
    return ends;
}

void generate(World& world, Chance& chance) {
    static constexpr std::array<Behaviour, 5> ways{answers, answersAtOnce, fails, breaksOff, talksNonsense};
    auto& host = *world.host;
    world.model.become({.chat = chance.from(ways)});
    const std::size_t first = host.received().size();
    const std::string name = chance.words(false);
    std::map<std::string, int> expected;
    for (std::size_t left = 1 + chance.below(4); left > 0; --left) {
        const std::string id = name + " " + std::to_string(left);
        expected[id] = 1;
        host.call("respond", EncodableMap{{"request_id", id}, {"prompt", chance.words(true)}}, modelChannel);
        chance.pause(80ms);
        if (chance.oneIn(2)) host.call("cancel", EncodableMap{{"request_id", id}}, modelChannel);
    }
    if (chance.oneIn(3)) host.call(chance.oneIn(2) ? "availability" : "prewarm", {}, modelChannel);
    const auto all = [&] {
        host.nextCall("nothing", 0ms); // reads what has arrived
        return ends(host, first) == expected;
    };
    if (!testbed::waitUntil(all)) world.fault("not every generation ended once");
}

} // namespace

std::vector<Step> generationSteps() { return {{"generate", 12, generate}}; }

} // namespace soak
