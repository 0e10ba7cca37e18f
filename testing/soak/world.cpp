#include "testing/soak/world.h"

#include "flutter/arguments.h"

#include <stdexcept>

namespace soak {

using testbed::Host;
using testbed::milliseconds;

namespace {

constexpr milliseconds longestAnswer{2000};

} // namespace

World::World(Chance& chance) {
    programs.push_back(std::make_unique<TrackedProgram>(
        desktop, "Alpha", std::vector<std::string>{"entry", "textview", "password"}, chance));
    programs.push_back(std::make_unique<TrackedProgram>(
        desktop, "Beta", std::vector<std::string>{"textview", "search", "password"}, chance));
    startHost();
}

void World::startHost() {
    host = std::make_unique<Host>(std::map<std::string, std::string>{
        {"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1"}, {"OPENAI_BASE_URL", model.url()}});
    bringHostToFront(); // or it would come to the front in the middle of a step
    askedToEnd = {};
    host->call("initialize", flutter::EncodableMap{});
    host->call("listen", {}, "quillmark.quillmark/system_model/events");
}

void World::bringHostToFront() {
    std::vector<testbed::WindowId> own;
    const bool came =
        testbed::waitUntil([&] { return !(own = desktop.windows(host->process().pid())).empty(); }) &&
        goTo(desktop, own.front());
    if (came) return;
    const auto front = desktop.activeWindow();
    throw std::runtime_error("The host's window does not come to the front; there is " +
                             (front ? '"' + desktop.title(*front) + '"' : "nothing") + ", and it is " +
                             (own.empty()                     ? "nowhere."
                              : desktop.isHidden(own.front()) ? "hidden."
                                                              : "on the screen."));
}

std::string World::call(std::string_view method, const flutter::EncodableValue& arguments) {
    return answer(host->startCall(method, arguments));
}

std::string World::answer(std::uint32_t call) {
    const auto outcome = host->answer(call);
    if (const auto* error = std::get_if<flutter::FlutterError>(&outcome)) return error->code;
    const auto* value = std::get_if<flutter::EncodableValue>(&outcome);
    const auto* reply = value ? flutter::asString(*value) : nullptr;
    return reply ? *reply : value ? "null" : "(not handled)";
}

void World::check() {
    const auto add = [&](const std::vector<std::string>& found) {
        faults.insert(faults.end(), found.begin(), found.end());
    };
    const auto asked = testbed::Clock::now();
    call("pin", false);
    if (testbed::Clock::now() - asked > longestAnswer) fault("the host took long to answer");
    if (!testbed::waitUntil([&] { return desktop.keyboard.nothingIsHeld(); }, milliseconds(1000)))
        fault("a key is down");
    for (const auto& program : programs)
        add(program->faults());
    add(terminal.faults());
    add(copied.faults(desktop));
    if (host->nextCall("capture", milliseconds(0))) fault("a capture that nobody asked for");
    if (const auto said = host->process().output(); !said.empty() && said != said_)
        fault("the host printed: " + said.substr(said_.size()));
    said_ = host->process().output();
}

} // namespace soak
