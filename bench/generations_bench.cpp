// Generations from their start to the bytes that leave for the interface, on the real background threads and
// main queue, with a model that has its answers ready.
#include "flutter/binary_messenger.h"
#include "model/system_model_bridge.h"
#include "testing/ready_model/ready_model.h"

#include <benchmark/benchmark.h>
#include <glib.h>
#include <malloc.h>

#include <filesystem>
#include <iterator>
#include <map>

namespace {

// An interface that counts what it is sent.
class Counter : public flutter::BinaryMessenger {
public:
    std::size_t messages = 0;

    void call(const char* channel, const flutter::MethodCall& call) {
        handlers_[channel](flutter::encodeMethodCall(call), [](auto) {});
    }
    void send(std::string_view, std::span<const std::uint8_t>) override { ++messages; }
    void send(std::string_view, std::span<const std::uint8_t>, Reply) override { ++messages; }
    void setMessageHandler(std::string channel, MessageHandler handler) override {
        handlers_[std::move(channel)] = std::move(handler);
    }

private:
    std::map<std::string, MessageHandler> handlers_;
};

std::size_t allocated() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void runUntil(const Counter& interface, std::size_t messages) {
    while (interface.messages < messages)
        g_main_context_iteration(nullptr, TRUE);
}

// 10,000 generations at once, 20 snapshots each: the model adds to every answer when the interface has the
// snapshots before. The argument is the length of the text.
void manyGenerations(benchmark::State& state) {
    constexpr std::size_t snapshots = 20;
    constexpr std::size_t generations = 10'000;
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    Counter interface;
    const auto bridge = SystemModelBridge::create(interface);
    interface.call("quillmark.quillmark/system_model/events", {"listen", {}});

    for (auto _ : state) {
        state.PauseTiming();
        const std::size_t before = allocated();
        for (std::size_t i = 0; i < generations; ++i) {
            const auto id = "0d6c5c3e-7f0b-4a57-9f4c-" + std::to_string(i);
            interface.call("quillmark.quillmark/system_model",
                           {"respond", flutter::EncodableMap{{"request_id", id}}});
        }
        while (ready_model::waiting() < generations)
            g_usleep(1000);
        state.counters["bytes_waiting"] = static_cast<double>(allocated() - before) / generations;
        const auto threads = std::filesystem::directory_iterator("/proc/self/task");
        state.counters["threads"] = static_cast<double>(std::distance(begin(threads), end(threads)));
        interface.messages = 0;
        state.ResumeTiming();

        for (std::size_t told = 1; told <= snapshots; ++told) {
            ready_model::tell(told == 1 ? text : "x");
            runUntil(interface, generations * told);
        }
        ready_model::end();
        runUntil(interface, generations * (snapshots + 1));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(generations * (snapshots + 1)));
}

BENCHMARK(manyGenerations)
    ->Arg(60)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();

} // namespace
