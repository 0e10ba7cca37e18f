// Measures an operation beside its floor: the least work that could do the same, such as copying the same
// bytes.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

namespace bench {

// How often the program has allocated memory since it started.
std::size_t allocations();

// The time in nanoseconds: of this thread's work, so that other programs do not count, or on the wall.
enum class TimeOf { thread, wall };
double nanoseconds(TimeOf what);

// Times `operation`, then `floor` as often. Reports the floor's time, the operation's as a multiple of it,
// and how often one operation allocates.
template <class Operation, class Floor>
void measure(benchmark::State& state, const Operation& operation, const Floor& floor,
             TimeOf what = TimeOf::thread) {
    const std::size_t allocationsBefore = allocations();
    const double start = nanoseconds(what);
    for (auto _ : state)
        operation();
    const double middle = nanoseconds(what);
    const std::size_t allocationsAfter = allocations();
    for (benchmark::IterationCount i = 0; i < state.iterations(); ++i)
        floor();
    const double end = nanoseconds(what);

    const auto times = static_cast<double>(state.iterations());
    state.counters["floor_ns"] = (end - middle) / times;
    state.counters["times_floor"] = (middle - start) / (end - middle);
    state.counters["allocations"] = static_cast<double>(allocationsAfter - allocationsBefore) / times;
}

} // namespace bench
