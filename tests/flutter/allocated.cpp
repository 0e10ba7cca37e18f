#include "flutter/allocated.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> allocated = 0;
}

std::size_t allocatedBytes() { return allocated; }

void* operator new(std::size_t size) {
    allocated += size;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
