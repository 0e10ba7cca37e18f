// Events and method calls over the frames of the socket.
#include "bench/floor.h"
#include "flutter/event_channel.h"
#include "flutter/frame_messenger.h"
#include "flutter/method_channel.h"

#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using flutter::EncodableMap;
using Bytes = std::vector<std::uint8_t>;

// Keeps the sink that an event channel gives it.
struct Listener : flutter::StreamHandler {
    std::optional<flutter::FlutterError> onListen(const flutter::EncodableValue&,
                                                  flutter::EventSink given) override {
        sink = std::move(given);
        return std::nullopt;
    }
    std::optional<flutter::FlutterError> onCancel(const flutter::EncodableValue&) override {
        return std::nullopt;
    }
    flutter::EventSink sink;
};

void eventToTheSink(benchmark::State& state) {
    std::size_t written = 0;
    flutter::FrameMessenger messenger([&](const Bytes& frame) { written += frame.size(); });
    flutter::EventChannel channel(messenger, "quillmark.quillmark/system_model/events");
    const auto listener = std::make_shared<Listener>();
    channel.setStreamHandler(listener);
    flutter::FrameMessenger interface([&](const Bytes& frame) { (void)messenger.receive(frame); });
    flutter::MethodChannel(interface, "quillmark.quillmark/system_model/events").invokeMethod("listen");

    for (auto _ : state)
        listener->sink(EncodableMap{{"request_id", "17"}, {"kind", "text"}, {"text", "Dear Anna,"}});
    benchmark::DoNotOptimize(written);
    state.SetItemsProcessed(state.iterations());
}

// A connected pair of sockets; whoever reads from one gets what was written to the other.
struct SocketPair {
    std::array<int, 2> ends{};

    SocketPair() {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
            throw std::runtime_error("There is no socket pair: the benchmark needs two free descriptors.");
    }
    ~SocketPair() {
        for (const int end : ends)
            close(end);
    }
};

void sendAll(int socket, const Bytes& bytes) {
    if (send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("The socket pair did not take a message.");
}

// The bytes that have arrived; empty when the other end is closed.
std::span<const std::uint8_t> received(int socket, Bytes& buffer) {
    const ssize_t count = recv(socket, buffer.data(), buffer.size(), 0);
    return std::span(buffer).first(count > 0 ? static_cast<std::size_t>(count) : 0);
}

// A messenger at one end of a socket pair.
struct End {
    int socket;
    Bytes buffer = Bytes(65536);
    flutter::FrameMessenger messenger{[this](const Bytes& frame) { sendAll(socket, frame); }};

    bool turn() {
        const auto bytes = received(socket, buffer);
        return !bytes.empty() && !messenger.receive(bytes);
    }
};

// Keeps this thread, and the threads that it starts meanwhile, on one processor: to wake a thread on another
// one takes from 10 to 70 us, depending on what that one did before.
class OneProcessor {
public:
    OneProcessor() {
        sched_getaffinity(0, sizeof before_, &before_);
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<std::size_t>(sched_getcpu()), &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    ~OneProcessor() { sched_setaffinity(0, sizeof before_, &before_); }
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;

private:
    cpu_set_t before_{};
};

// A call and its reply between two threads, beside two messages of the same sizes that nobody looks into.
void methodCall(benchmark::State& state) {
    const OneProcessor oneProcessor;
    SocketPair calls, bare;
    std::jthread host([socket = calls.ends[0]] {
        End end{socket};
        flutter::MethodChannel channel(end.messenger, "quillmark.quillmark/desktop");
        channel.setMethodCallHandler(
            [](const flutter::MethodCall&, flutter::MethodResult result) { result.success(); });
        while (end.turn()) {
        }
    });
    std::jthread echo([socket = bare.ends[0]] {
        Bytes buffer(65536);
        while (!received(socket, buffer).empty())
            sendAll(socket, Bytes(11));
    });

    End end{calls.ends[1]};
    flutter::MethodChannel channel(end.messenger, "quillmark.quillmark/desktop");
    Bytes buffer(65536);
    const Bytes request(51);
    bench::measureInTurn(
        state,
        [&] {
            bool answered = false;
            channel.invokeMethod("growHeight", 120, [&](const flutter::CallOutcome&) { answered = true; });
            while (!answered && end.turn()) {
            }
        },
        [&] {
            sendAll(bare.ends[1], request);
            received(bare.ends[1], buffer);
        });
    for (const auto* pair : {&calls, &bare})
        shutdown(pair->ends[1], SHUT_RDWR);
}

} // namespace

BENCHMARK(eventToTheSink);
BENCHMARK(methodCall)->UseManualTime();
