// Measures an operation beside its floor: the least work that could do the same, such as copying the same
// bytes.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>

namespace bench {

// How often the program has allocated memory since it started.
std::size_t allocations();

// The time of this thread's work in nanoseconds: what other programs do meanwhile does not count.
double threadNanoseconds();

// Reports the floor's time, the operation's as a multiple of it, and how often one operation allocates.
void report(benchmark::State& state, double operationNanoseconds, double floorNanoseconds,
            std::size_t allocations);

// Times `operation` as often as is asked for, then `floor` as often.
template <class Operation, class Floor>
void measure(benchmark::State& state, const Operation& operation, const Floor& floor) {
    const std::size_t allocationsBefore = allocations();
    const double start = threadNanoseconds();
    for (auto _ : state)
        operation();
    const double middle = threadNanoseconds();
    const std::size_t allocationsAfter = allocations();
    for (benchmark::IterationCount i = 0; i < state.iterations(); ++i)
        floor();
    report(state, middle - start, threadNanoseconds() - middle, allocationsAfter - allocationsBefore);
}

// The same for what waits for another thread: by the clock on the wall, and in turn, because how long a
// thread takes to wake depends on what else runs. Needs UseManualTime().
template <class Operation, class Floor>
void measureInTurn(benchmark::State& state, const Operation& operation, const Floor& floor) {
    using Clock = std::chrono::steady_clock;
    std::chrono::duration<double> total{}, totalFloor{};
    std::size_t allocated = 0;
    for (auto _ : state) {
        const std::size_t allocationsBefore = allocations();
        const auto start = Clock::now();
        operation();
        const auto middle = Clock::now();
        allocated += allocations() - allocationsBefore;
        floor();
        totalFloor += Clock::now() - middle;
        total += middle - start;
        state.SetIterationTime(std::chrono::duration<double>(middle - start).count());
    }
    report(state, total.count() * 1e9, totalFloor.count() * 1e9, allocated);
}

} // namespace bench
