// What long answers cost while they grow: the real host's memory when the interface reads nothing meanwhile,
// and the time that other calls take when it reads.
//
//   growing_answers_bench [SECONDS]    for as long the interface reads nothing, 10 without
#include "flutter/arguments.h"
#include "flutter/standard_codec.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/model_server/scripted_server.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

using flutter::EncodableMap;
using testbed::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::size_t answers = 10, answerBytes = 1 << 20, pieceBytes = 1 << 10;
constexpr auto modelChannel = "quillmark.quillmark/system_model";
constexpr auto eventChannel = "quillmark.quillmark/system_model/events";

// An answer that grows evenly for as long as that.
ServerBehaviour growingFor(std::chrono::seconds time) {
    return {.chat = [time](ClientConnection& connection) {
        constexpr std::size_t pieces = answerBytes / pieceBytes;
        connection.head(200);
        for (std::size_t i = 0; i < pieces; ++i) {
            connection.text(std::string(pieceBytes, 'x'));
            std::this_thread::sleep_for(std::chrono::microseconds(time) / pieces);
        }
        connection.send("data: [DONE]\n\n");
    }};
}

// Megabytes, "VmRSS" or "VmHWM" (the most there was).
double memory(const testbed::Process& host, const std::string& name) {
    std::ifstream status("/proc/" + std::to_string(host.pid()) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::strtod(line.c_str() + name.size() + 1, nullptr) / 1024;
    return 0;
}

struct Growth {
    explicit Growth(std::chrono::seconds time)
        : server(growingFor(time)),
          host({{"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1"}, {"OPENAI_BASE_URL", server.url()}}) {
        host.call("listen", {}, eventChannel);
        host.call("availability", {}, modelChannel);
        for (std::size_t i = 0; i < answers; ++i)
            host.call("respond", EncodableMap{{"request_id", std::to_string(i)}, {"max_tokens", 1 << 30}},
                      modelChannel);
    }

    // Reads until every answer has ended; how many are whole.
    std::size_t wholeAnswers() {
        std::map<std::string, std::size_t> lengths;
        std::size_t whole = 0, read = 0, ended = 0;
        while (ended < answers) {
            host.awaitBytes();
            host.nextCall("nothing", std::chrono::milliseconds(0));
            for (; read < host.received().size(); ++read) {
                const auto& frame = host.received()[read].frame;
                if (frame.channel != eventChannel) continue;
                const auto envelope = flutter::decodeEnvelope(frame.payload);
                const auto* map = flutter::asMap(std::get<flutter::EncodableValue>(*envelope));
                const auto text = [&](const char* key) {
                    const auto* found = flutter::asString(flutter::member(map, key));
                    return found ? *found : std::string();
                };
                const auto id = text("request_id");
                if (text("kind") == "text") {
                    lengths[id] = text("text").size();
                    ++snapshots;
                } else {
                    ++ended;
                    whole += text("kind") == "done" && lengths[id] == answerBytes;
                }
            }
        }
        return whole;
    }

    ScriptedServer server;
    testbed::Host host;
    std::size_t snapshots = 0;
};

void measureMemory(std::chrono::seconds unread) {
    Growth growth(unread);
    const double before = memory(growth.host.process(), "VmRSS");
    std::this_thread::sleep_for(unread);
    const double unreadMemory = memory(growth.host.process(), "VmRSS");
    const std::size_t whole = growth.wholeAnswers();
    std::printf("the interface reads nothing for %lld s while %zu answers of 1 MB grow\n",
                static_cast<long long>(unread.count()), answers);
    std::printf("%-62s %8.1f MB, at the end %8.1f MB, most %8.1f MB   limit 100 MB\n",
                "  the host's memory at the start", before, unreadMemory,
                memory(growth.host.process(), "VmHWM"));
    std::printf("%-62s %8zu of %zu\n", "  answers that are whole once it reads again", whole, answers);
}

void print(const char* what, std::vector<double> times) {
    std::ranges::sort(times);
    std::printf("%-62s median %8.2f ms   99 of 100 %8.2f ms\n", what, times[times.size() / 2],
                times[times.size() * 99 / 100]);
}

// Reads what the host sends, until the condition holds.
void readUntil(testbed::Host& host, const auto& condition) {
    while (!condition()) {
        host.awaitBytes(std::chrono::milliseconds(1));
        host.nextCall("nothing", std::chrono::milliseconds(0));
    }
}

// A call every 20 ms.
std::vector<double> timesOfCalls(testbed::Host& host, std::size_t count) {
    std::vector<double> times;
    while (times.size() < count) {
        const auto start = Clock::now();
        const auto call = host.startCall("noSuchMethod");
        std::size_t at = host.received().size();
        readUntil(host, [&] {
            while (at < host.received().size() && host.received()[at].frame.id != call)
                ++at;
            return at < host.received().size();
        });
        times.push_back(Milliseconds(host.received()[at].at - start).count());
        readUntil(host, [&] { return Clock::now() - start >= std::chrono::milliseconds(20); });
    }
    return times;
}

void measureCalls() {
    Growth growth(std::chrono::seconds(5));
    print("a call's answer while 10 answers grow to 1 MB in 5 s", timesOfCalls(growth.host, 150));
    const std::size_t whole = growth.wholeAnswers();
    print("a call's answer when nothing grows", timesOfCalls(growth.host, 50));
    std::printf("%-62s %8zu of %zu, %zu snapshots\n", "  answers that are whole", whole, answers,
                growth.snapshots);
}

} // namespace

int main(int argc, char** argv) {
    try {
        testbed::Desktop desktop;
        measureMemory(std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 10));
        measureCalls();
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "growing_answers_bench: %s\n", problem.what());
        return 1;
    }
}
