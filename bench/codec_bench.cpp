// The codec, beside copying the bytes of the same message.
#include "bench/floor.h"
#include "flutter/standard_codec.h"

#include <string>
#include <vector>

namespace {

using flutter::EncodableList;
using flutter::EncodableMap;
using flutter::EncodableValue;

flutter::MethodCall capture() {
    return {"capture", EncodableMap{{"text", std::string(3000, 'a')},
                                    {"source", "selection"},
                                    {"app_id", "org.example.Writer"},
                                    {"app_name", "Writer"},
                                    {"title", "Letter.txt"},
                                    {"token", "01234567-89AB-CDEF-0123-456789ABCDEF"},
                                    {"truncated", false}}};
}

flutter::MethodCall initialize() {
    EncodableList excluded;
    for (int i = 0; i < 5; ++i)
        excluded.emplace_back("org.example.Program" + std::to_string(i));
    return {"initialize",
            EncodableMap{{"excluded_apps", excluded},
                         {"hotkey", EncodableMap{{"keyCode", 49}, {"option", true}, {"shift", true}}}}};
}

EncodableValue eventOf(std::size_t characters) {
    return EncodableMap{{"request_id", "17"}, {"kind", "text"}, {"text", std::string(characters, 'a')}};
}

EncodableValue strings() {
    EncodableList list;
    for (int i = 0; i < 10'000; ++i)
        list.emplace_back("string " + std::to_string(i));
    return list;
}

template <class Message>
void measureBesideCopying(benchmark::State& state, const std::vector<std::uint8_t>& bytes, Message message) {
    bench::measure(
        state, [&] { benchmark::DoNotOptimize(message()); },
        [&] { benchmark::DoNotOptimize(std::vector<std::uint8_t>(bytes)); });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void encodeCall(benchmark::State& state, const flutter::MethodCall& call) {
    measureBesideCopying(state, encodeMethodCall(call), [&] { return encodeMethodCall(call); });
}

void decodeCall(benchmark::State& state, const flutter::MethodCall& call) {
    const auto bytes = encodeMethodCall(call);
    measureBesideCopying(state, bytes, [&] { return flutter::decodeMethodCall(bytes); });
}

void encodeEvent(benchmark::State& state, const EncodableValue& event) {
    measureBesideCopying(state, encodeSuccessEnvelope(event), [&] { return encodeSuccessEnvelope(event); });
}

void encodeEventIntoUsedMemory(benchmark::State& state, const EncodableValue& event) {
    std::vector<std::uint8_t> buffer = encodeSuccessEnvelope(event);
    std::vector<std::uint8_t> copy;
    const auto bytes = buffer;
    bench::measure(
        state, [&] { buffer = encodeSuccessEnvelope(event, std::move(buffer)); },
        [&] { benchmark::DoNotOptimize(copy = bytes); });
}

void decodeEvent(benchmark::State& state, const EncodableValue& event) {
    const auto bytes = encodeSuccessEnvelope(event);
    measureBesideCopying(state, bytes, [&] { return flutter::decodeEnvelope(bytes); });
}

} // namespace

BENCHMARK_CAPTURE(encodeCall, capture_3KB, capture());
BENCHMARK_CAPTURE(encodeCall, initialize, initialize());
BENCHMARK_CAPTURE(encodeEvent, text_50B, eventOf(13));
BENCHMARK_CAPTURE(encodeEvent, text_8KB, eventOf(8000));
BENCHMARK_CAPTURE(encodeEvent, strings_10000, strings());
BENCHMARK_CAPTURE(encodeEventIntoUsedMemory, text_3KB, eventOf(3000));
BENCHMARK_CAPTURE(encodeEventIntoUsedMemory, text_50B, eventOf(13));
BENCHMARK_CAPTURE(encodeEventIntoUsedMemory, text_8KB, eventOf(8000));
BENCHMARK_CAPTURE(decodeCall, capture_3KB, capture());
BENCHMARK_CAPTURE(decodeCall, initialize, initialize());
BENCHMARK_CAPTURE(decodeEvent, text_50B, eventOf(13));
BENCHMARK_CAPTURE(decodeEvent, text_8KB, eventOf(8000));
BENCHMARK_CAPTURE(decodeEvent, strings_10000, strings());
