// The socket's bytes arrive in any pieces: however they are cut, the same frames must be handled and the same
// one refused. The first byte says in which pieces the rest arrives.
#include "check.h"
#include "flutter/frame_messenger.h"
#include "flutter/method_channel.h"

#include <vector>

using namespace flutter;

namespace {

struct Outcome {
    std::vector<std::vector<std::uint8_t>> written;
    std::vector<std::string> called;
    bool refused = false;

    bool operator==(const Outcome&) const = default;
};

Outcome receive(std::span<const std::uint8_t> bytes, std::size_t piece) {
    Outcome outcome;
    FrameMessenger messenger([&](std::vector<std::uint8_t> written) {
        check(written.size() >= 9);
        outcome.written.push_back(std::move(written));
    });
    MethodChannel channel(messenger, "c");
    channel.setMethodCallHandler([&](const MethodCall& call, MethodResult result) {
        outcome.called.push_back(call.method);
        result.success(call.arguments);
    });
    channel.invokeMethod("ask", {}, [](const CallOutcome&) {});
    inPieces(bytes, piece, [&](auto part) {
        const bool refused = messenger.receive(part).has_value();
        check(refused || !outcome.refused);
        outcome.refused = refused;
    });
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::span bytes(data + 1, size - 1);
    check(receive(bytes, std::size_t{1} + data[0]) == receive(bytes, bytes.size()));
    return 0;
}
