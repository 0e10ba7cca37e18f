// The codec and the text questions, each beside the time it takes to copy the same bytes.
#include "flutter/frame_messenger.h"
#include "flutter/standard_codec.h"
#include "text/text.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

using flutter::EncodableMap;

flutter::MethodCall captureOf(std::int64_t bytes) {
    return {"capture", EncodableMap{{"text", std::string(static_cast<std::size_t>(bytes), 'a')},
                                    {"source", "selection"},
                                    {"app_id", "org.example.Writer"},
                                    {"app_name", "Writer"},
                                    {"title", "Letter.txt"},
                                    {"token", "01234567-89AB-CDEF-0123-456789ABCDEF"},
                                    {"truncated", false}}};
}

void codecEncode(benchmark::State& state) {
    const auto call = captureOf(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(flutter::encodeMethodCall(call));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void codecDecode(benchmark::State& state) {
    const auto bytes = flutter::encodeMethodCall(captureOf(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(flutter::decodeMethodCall(bytes));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void codecCopyOfTheSameBytes(benchmark::State& state) {
    const auto bytes = flutter::encodeMethodCall(captureOf(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(std::vector<std::uint8_t>(bytes));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void textCutOfTenMegabytes(benchmark::State& state) {
    std::string field;
    while (field.size() < 10'000'000)
        field += "Dear Anna, thank you. 글빛나래 👨‍👩‍👧 ";
    for (auto _ : state)
        benchmark::DoNotOptimize(text::firstCharacters(text::trimWhitespaceAndNewlines(field), 3000));
}

void textEqualityOfTenMegabytes(benchmark::State& state) {
    const std::string one(10'000'000, 'a'), other(10'000'000, 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(text::equalStrings(one, other));
}

void textCompareOfTheSameBytes(benchmark::State& state) {
    const std::string one(10'000'000, 'a'), other(10'000'000, 'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(std::memcmp(one.data(), other.data(), one.size()));
}

} // namespace

BENCHMARK(codecEncode)->Arg(1'000)->Arg(1'000'000);
BENCHMARK(codecDecode)->Arg(1'000)->Arg(1'000'000);
BENCHMARK(codecCopyOfTheSameBytes)->Arg(1'000)->Arg(1'000'000);
BENCHMARK(textCutOfTenMegabytes)->Unit(benchmark::kMicrosecond);
BENCHMARK(textEqualityOfTenMegabytes)->Unit(benchmark::kMicrosecond);
BENCHMARK(textCompareOfTheSameBytes)->Unit(benchmark::kMicrosecond);
