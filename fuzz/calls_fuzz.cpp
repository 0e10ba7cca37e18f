// The interface may call anything with any arguments in any order, while a person uses the desktop: the whole
// host, on the simulated desktop. Every call must be answered, unless the host has ended, and no rewrite may
// reach a program that nothing was captured in.
#include "check.h"
#include "flutter/arguments.h"
#include "support/host.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <chrono>

using flutter::EncodableList;
using flutter::EncodableMap;
using flutter::EncodableValue;
using Milliseconds = std::chrono::milliseconds;

namespace {

constexpr const char* methods[] = {"initialize",
                                   "paste",
                                   "show",
                                   "hide",
                                   "pin",
                                   "growHeight",
                                   "quit",
                                   "cancelQuit",
                                   "openPath",
                                   "openUrl",
                                   "requestPermission",
                                   "localize",
                                   "excludeModelBackups",
                                   ""};
constexpr const char* keys[] = {"excluded_apps", "hotkey", "keyCode", "command", "option",
                                "control",       "shift",  "text",    "token",   ""};
constexpr int deepest = 3;
constexpr auto rewrite = "rewrite";

EncodableValue anyValue(FuzzedDataProvider& input, int depth = 0) {
    switch (input.ConsumeIntegralInRange(0, depth < deepest ? 8 : 5)) {
    case 0:
        return {};
    case 1:
        return input.ConsumeBool();
    case 2:
        return input.ConsumeIntegral<std::int32_t>();
    case 3:
        return input.ConsumeIntegral<std::int64_t>();
    case 4:
        return input.ConsumeFloatingPoint<double>();
    case 5:
        return input.ConsumeRandomLengthString(64);
    case 6: {
        EncodableList list;
        for (int count = input.ConsumeIntegralInRange(0, 3); count > 0; --count)
            list.push_back(anyValue(input, depth + 1));
        return list;
    }
    default: {
        EncodableMap map;
        for (int count = input.ConsumeIntegralInRange(0, 4); count > 0; --count)
            map.set(std::string(input.PickValueInArray(keys)), anyValue(input, depth + 1));
        return map;
    }
    }
}

// A host with a program that texts are captured in, and another.
struct Desktop {
    Host host;
    simulated::Program& writer = host.world.openProgram();
    simulated::Program& stranger = host.world.openProgram();

    explicit Desktop(FuzzedDataProvider& input) {
        writer.addField({.value = input.ConsumeRandomLengthString(64)});
        stranger.addField({.value = "notes"});
        host.world.bringToFront(writer);
    }
};

// With the token of the newest capture, if there is one.
EncodableMap pasteOfRewrite(const Host& host) {
    EncodableMap arguments{{"text", rewrite}};
    for (const auto& call : host.calls())
        if (const auto& token = flutter::member(flutter::asMap(call.arguments), "token"); !token.isNull())
            arguments.set("token", token);
    return arguments;
}

Host::Call anyCall(Host& host, FuzzedDataProvider& input) {
    switch (input.ConsumeIntegralInRange(0, 2)) {
    case 0:
        return host.call(input.PickValueInArray(methods), anyValue(input));
    case 1: {
        const auto bytes = input.ConsumeBytes<std::uint8_t>(input.ConsumeIntegralInRange<std::size_t>(0, 64));
        return host.call(input.PickValueInArray(methods),
                         flutter::decodeMessage(bytes).value_or(EncodableValue()));
    }
    default:
        return host.call("paste", pasteOfRewrite(host));
    }
}

void personActs(Desktop& desktop, FuzzedDataProvider& input) {
    auto& world = desktop.host.world;
    const Milliseconds time(input.ConsumeIntegralInRange(0, 2000));
    switch (input.ConsumeIntegralInRange(0, 7)) {
    case 0:
        if (!world.inFront(desktop.stranger)) desktop.host.pressHotkey();
        return;
    case 1:
        return world.userQuits();
    case 2:
        return world.userReopensHost();
    case 3:
        return world.putOnPasteboard(input.ConsumeRandomLengthString(32));
    case 4:
        return world.after(time, [&] { world.bringToFront(desktop.stranger); });
    case 5:
        return world.bringToFront(desktop.writer);
    case 6:
        desktop.writer.focusedField->value = input.ConsumeRandomLengthString(64);
        return;
    default:
        return world.runFor(time);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Desktop desktop(input);
    auto& world = desktop.host.world;

    std::vector<Host::Call> calls;
    while (input.remaining_bytes() > 0 && !world.hostEnded) {
        if (input.ConsumeBool()) personActs(desktop, input);
        calls.push_back(anyCall(desktop.host, input));
    }
    world.runFor(std::chrono::seconds(20));
    check(world.hostEnded || std::ranges::all_of(calls, &Host::Call::answered));
    check(desktop.stranger.focusedField->value == "notes");
    return 0;
}
