#include "bench/floor.h"

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <new>

namespace {

std::atomic<std::size_t> count = 0;

} // namespace

std::size_t bench::allocations() { return count; }

double bench::threadNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

void bench::report(benchmark::State& state, double operationNanoseconds, double floorNanoseconds,
                   std::size_t allocations) {
    const auto times = static_cast<double>(state.iterations());
    state.counters["floor_ns"] = floorNanoseconds / times;
    state.counters["times_floor"] = operationNanoseconds / floorNanoseconds;
    state.counters["allocations"] = static_cast<double>(allocations) / times;
}

void* operator new(std::size_t size) {
    count.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
