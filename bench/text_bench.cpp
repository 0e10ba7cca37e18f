// What the host does with long texts.
#include "bench/floor.h"
#include "text/text.h"

#include <cstring>
#include <string>

namespace {

void cutOfTenMegabytes(benchmark::State& state) {
    std::string field;
    while (field.size() < 10'000'000)
        field += "Dear Anna, thank you. 글빛나래 👨‍👩‍👧 ";
    for (auto _ : state)
        benchmark::DoNotOptimize(text::firstCharacters(text::trimWhitespaceAndNewlines(field), 3000));
}

void equalityOfTenMegabytes(benchmark::State& state) {
    const std::string one(10'000'000, 'a'), other(10'000'000, 'a');
    bench::measure(
        state, [&] { benchmark::DoNotOptimize(text::equalStrings(one, other)); },
        [&] { benchmark::DoNotOptimize(std::memcmp(one.data(), other.data(), one.size())); });
}

} // namespace

BENCHMARK(cutOfTenMegabytes)->Unit(benchmark::kMicrosecond);
BENCHMARK(equalityOfTenMegabytes)->Unit(benchmark::kMicrosecond);
